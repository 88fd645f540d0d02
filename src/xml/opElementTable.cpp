#include "xml/opElementTable.h"

#include "utils/text.h"
#include "xml/CDLElt.h"
#include "xml/ditherElt.h"
#include "xml/exposureContrastElt.h"
#include "xml/gammaElt.h"
#include "xml/gamutMapElt.h"
#include "xml/hueVectorElt.h"
#include "xml/logElt.h"
#include "xml/lut1DElt.h"
#include "xml/lut3DElt.h"
#include "xml/matrixElt.h"
#include "xml/rangeElt.h"
#include "xml/referenceElt.h"

namespace Color::Xml::Reader {

namespace {

struct OpElementName
{
    const char* name;
    OpType type;
};

constexpr OpElementName kNames[] = {
    {"LUT1D", OP_LUT_1D},
    {"InverseLUT1D", OP_INVERSE_LUT_1D},
    {"LUT3D", OP_LUT_3D},
    {"Matrix", OP_MATRIX},
    {"Range", OP_RANGE},
    {"Reference", OP_REFERENCE},
    {"Gamma", OP_GAMMA},
    {"ExposureContrast", OP_EXPOSURE_CONTRAST},
    {"Log", OP_LOG},
    {"ASC_CDL", OP_CDL},
    {"Dither", OP_DITHER},
    {"GamutMap", OP_GAMUT_MAP},
    {"HueVector", OP_HUE_VECTOR},
};

/// Which versions of the file a row is for.
struct Versions
{
    enum Start
    {
        Any,
        From,
        Above
    };
    Start start;
    float lowest; ///< unused for Any
    float highest;

    bool contain(float version) const
    {
        if (start == From && !(version >= lowest)) return false;
        if (start == Above && !(version > lowest)) return false;
        return version <= highest;
    }
};

template <class Elt>
std::unique_ptr<OpElt> make(const std::string& name, TransformElt& parent, const ReadContext& context)
{
    return std::make_unique<Elt>(name, parent, context);
}

struct OpElementRow
{
    OpType type;
    Versions versions;
    std::unique_ptr<OpElt> (*make)(const std::string&, TransformElt&, const ReadContext&);
};

constexpr OpElementRow kRows[] = {
    {OP_LUT_1D, {Versions::Any, 0.f, 1.3f}, make<Lut1DElt>},
    {OP_LUT_1D, {Versions::Above, 1.3f, 1.6f}, make<Lut1DElt_1_4>},
    {OP_INVERSE_LUT_1D, {Versions::From, 1.3f, 1.6f}, make<InvLut1DElt>},
    {OP_LUT_3D, {Versions::Any, 0.f, 1.6f}, make<Lut3DElt>},
    {OP_MATRIX, {Versions::Any, 0.f, 1.2f}, make<MatrixElt>},
    {OP_MATRIX, {Versions::Above, 1.2f, 1.6f}, make<MatrixElt_1_3>},
    {OP_RANGE, {Versions::Any, 0.f, 1.6f}, make<RangeElt>},
    {OP_REFERENCE, {Versions::Any, 0.f, 1.6f}, make<ReferenceElt>},
    {OP_GAMMA, {Versions::Any, 0.f, 1.4f}, make<GammaElt>},
    {OP_GAMMA, {Versions::Above, 1.4f, 1.6f}, make<GammaElt_1_5>},
    {OP_EXPOSURE_CONTRAST, {Versions::Any, 0.f, 1.6f}, make<ExposureContrastElt>},
    {OP_LOG, {Versions::From, 1.3f, 1.6f}, make<LogElt>},
    {OP_CDL, {Versions::From, 1.3f, 1.6f}, make<CDLElt>},
    {OP_DITHER, {Versions::From, 1.3f, 1.6f}, make<DitherElt>},
    {OP_GAMUT_MAP, {Versions::From, 1.4f, 1.6f}, make<GamutMapElt>},
    {OP_HUE_VECTOR, {Versions::From, 1.4f, 1.6f}, make<HueVectorElt>},
};

} // namespace

std::optional<OpType> findOpElement(const std::string& name)
{
    for (const OpElementName& row : kNames) {
        if (equalsIgnoreCase(name, row.name)) return row.type;
    }
    return std::nullopt;
}

std::unique_ptr<OpElt> makeOpElement(OpType type, float version, const std::string& name, TransformElt& parent,
                                     const ReadContext& context)
{
    for (const OpElementRow& row : kRows) {
        if (row.type == type && row.versions.contain(version)) return row.make(name, parent, context);
    }
    return nullptr;
}

} // namespace Color::Xml::Reader
