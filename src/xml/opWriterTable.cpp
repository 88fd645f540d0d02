#include "xml/opWriterTable.h"

#include "xml/CDLWriter.h"
#include "xml/ditherWriter.h"
#include "xml/exposureContrastWriter.h"
#include "xml/gammaWriter.h"
#include "xml/gamutMapWriter.h"
#include "xml/hueVectorWriter.h"
#include "xml/logWriter.h"
#include "xml/lut1DWriter.h"
#include "xml/lut3DWriter.h"
#include "xml/matrixWriter.h"
#include "xml/rangeWriter.h"
#include "xml/referenceWriter.h"

#include <array>

namespace Color::Xml::Writer {

namespace {

using WriterMaker = std::unique_ptr<OpWriter> (*)(XmlFormatter& formatter, const Op& op);

template <class Writer, class OpClass>
std::unique_ptr<OpWriter> make(XmlFormatter& formatter, const Op& op)
{
    return std::make_unique<Writer>(formatter, static_cast<const OpClass&>(op));
}

/// By op type; null where there is none.
constexpr std::array<WriterMaker, kOpTypeCount> makeTable()
{
    std::array<WriterMaker, kOpTypeCount> table{};
    table[OP_LUT_1D] = make<Lut1DWriter, Lut1DOp>;
    table[OP_INVERSE_LUT_1D] = make<InvLut1DWriter, InvLut1DOp>;
    table[OP_LUT_3D] = make<Lut3DWriter, Lut3DOp>;
    table[OP_MATRIX] = make<MatrixWriter, MatrixOp>;
    table[OP_RANGE] = make<RangeWriter, RangeOp>;
    table[OP_REFERENCE] = make<ReferenceWriter, ReferenceOp>;
    table[OP_GAMMA] = make<GammaWriter, GammaOp>;
    table[OP_EXPOSURE_CONTRAST] = make<ExposureContrastWriter, ExposureContrastOp>;
    table[OP_LOG] = make<LogWriter, LogOp>;
    table[OP_CDL] = make<CDLWriter, CDLOp>;
    table[OP_DITHER] = make<DitherWriter, DitherOp>;
    table[OP_GAMUT_MAP] = make<GamutMapWriter, GamutMapOp>;
    table[OP_HUE_VECTOR] = make<HueVectorWriter, HueVectorOp>;
    return table;
}

constexpr std::array<WriterMaker, kOpTypeCount> kTable = makeTable();

} // namespace

std::unique_ptr<OpWriter> makeOpWriter(XmlFormatter& formatter, const Op& op)
{
    const auto type = static_cast<std::size_t>(op.getOpType());
    const WriterMaker maker = type < kTable.size() ? kTable[type] : nullptr;
    return maker ? maker(formatter, op) : nullptr;
}

} // namespace Color::Xml::Writer
