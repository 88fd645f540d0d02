#include "xml/opElementTable.h"

#include "utils/text.h"
#include "xml/matrixElt.h"
#include "xml/rangeElt.h"

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
    {OP_MATRIX, {Versions::Any, 0.f, 1.2f}, make<MatrixElt>},
    {OP_MATRIX, {Versions::Above, 1.2f, 1.6f}, make<MatrixElt_1_3>},
    {OP_RANGE, {Versions::Any, 0.f, 1.6f}, make<RangeElt>},
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
