#include "transform/invLut1DOp.h"

#include "transform/opList.h"
#include "transform/styleNames.h"
#include "utils/exception.h"

#include <cmath>

namespace Color {

namespace {

const char* const kStyleNames[] = {"exact", "fast"};

/// The LUT itself when it can be inverted.
const Lut1DOp& checkInvertible(const Lut1DOp& lut)
{
    if (lut.hasRawHalfs()) raise(LogCategory::TRANSFORM_LUT_1D, ErrorIds::LUT_1D_RAW_HALFS_INVERSE_UNSUPPORTED);
    return lut;
}

/// The entries of one component, in the order of their input values.
class Curve
{
public:
    Curve(Lut1DOp::Lut3by1DArray& array, bool isHalfDomain, uint32_t component)
        : m_values(array.getValues()), m_components(array.getNumColorComponents()), m_component(component),
          m_isHalfDomain(isHalfDomain), m_length(isHalfDomain ? InvLut1DOp::kFiniteHalfs : array.getLength())
    {}

    uint32_t getLength() const { return m_length; }

    float& operator[](uint32_t position) const
    {
        const std::size_t index = m_isHalfDomain ? InvLut1DOp::halfCodeAt(position) : position;
        return m_values[index * m_components + m_component];
    }

private:
    Array::Values& m_values;
    uint32_t m_components;
    uint32_t m_component;
    bool m_isHalfDomain;
    uint32_t m_length;
};

/// A NaN becomes the value before it, or at the start the first number behind it. A curve of nothing else becomes 0.
void replaceNaNs(const Curve& curve)
{
    float previous = 0.0F;
    for (uint32_t i = 0; i < curve.getLength(); ++i) {
        if (std::isnan(curve[i])) continue;
        previous = curve[i];
        break;
    }
    for (uint32_t i = 0; i < curve.getLength(); ++i) {
        if (std::isnan(curve[i])) curve[i] = previous;
        previous = curve[i];
    }
}

/// Puts a flat stretch where the curve would turn back.
void flattenReversals(const Curve& curve, bool isIncreasing)
{
    for (uint32_t i = 1; i < curve.getLength(); ++i) {
        const float previous = curve[i - 1];
        if (isIncreasing ? curve[i] < previous : curve[i] > previous) curve[i] = previous;
    }
}

InvLut1DOp::Run setUpCurve(const Curve& curve)
{
    replaceNaNs(curve);
    InvLut1DOp::Run run;
    const uint32_t length = curve.getLength();
    if (length < 2) return run;

    // The second-last value tells the direction, so that two entries never rise and a rising pair becomes flat.
    run.isIncreasing = curve[length - 2] > curve[0];
    flattenReversals(curve, run.isIncreasing);

    run.end = length - 1;
    while (run.end > 0 && curve[run.end - 1] == curve[length - 1])
        --run.end;
    // A flat curve ends where it starts, at 0.
    while (run.start < run.end && curve[run.start + 1] == curve[0])
        ++run.start;
    return run;
}

} // namespace

InvLut1DOp::InvLut1DOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                       const Descriptions& descriptions, Interpolation interpolation, uint32_t length, HalfFlags flags)
    : Lut1DOp(in, out, Lut1DOp(out, in, id, name, descriptions, interpolation, length, flags)),
      m_style(getDefaultStyle(flags))
{
    setUp();
}

InvLut1DOp::InvLut1DOp(const Lut1DOp& lut)
    : Lut1DOp(lut.getOutBitDepth(), lut.getInBitDepth(), checkInvertible(lut)),
      m_style(getDefaultStyle(lut.getHalfFlags()))
{
    setUp();
}

Op* InvLut1DOp::clone() const { return new InvLut1DOp(*this); }

void InvLut1DOp::setInBitDepth(BitDepth depth)
{
    scaleArray(getBitDepthMaxValue(depth) / getBitDepthMaxValue(getInBitDepth()));
    Op::setInBitDepth(depth);
}

void InvLut1DOp::setOutBitDepth(BitDepth depth) { storeOutBitDepth(depth); }

OpType InvLut1DOp::getOpType() const { return OP_INVERSE_LUT_1D; }

const std::string& InvLut1DOp::getOpTypeName() const
{
    static const std::string typeName = "Inverse LUT 1D";
    return typeName;
}

bool InvLut1DOp::isNoOp() const { return isIdentityAt(getInBitDepth()); }

bool InvLut1DOp::isEqual(const Op& other) const
{
    const auto* inverse = dynamic_cast<const InvLut1DOp*>(&other);
    return inverse && Lut1DOp::isEqual(other) && m_style == inverse->m_style;
}

void InvLut1DOp::appendInverse(OpList& list) const
{
    auto lut = std::make_unique<Lut1DOp>(static_cast<const Lut1DOp&>(*this));
    // Plain stores: the table is in the scale of the in depth already.
    lut->Op::setInBitDepth(getOutBitDepth());
    lut->Op::setOutBitDepth(getInBitDepth());
    list.append(lut.release());
}

InvLut1DOp::Style InvLut1DOp::styleNamed(const char* text)
{
    const std::string name = orEmpty(text);
    if (name.empty()) raise(LogCategory::TRANSFORM_LUT_1D, ErrorIds::LUT_1D_INVALID_INVERSE_STYLE);
    const auto style = findStyle<Style>(kStyleNames, name);
    if (!style) raise(LogCategory::TRANSFORM_LUT_1D, ErrorIds::LUT_1D_UNRECOGNIZED_INVERSE_STYLE, name);
    return *style;
}

const char* InvLut1DOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

void InvLut1DOp::setUp()
{
    m_runs = {};
    // A table of a wrong size has nothing to walk over; validate() refuses it.
    if (!isTableSound()) return;
    Lut3by1DArray& array = getArray();
    for (uint32_t component = 0; component < m_runs.size(); ++component) {
        // A single curve is that of all three.
        const bool isOwn = component < array.getNumColorComponents();
        m_runs[component] = isOwn ? setUpCurve(Curve(array, isHalfDomain(), component)) : m_runs[0];
    }
}

uint32_t InvLut1DOp::halfCodeAt(uint32_t position)
{
    constexpr uint32_t kLowestFinite = 0xfbff;
    constexpr uint32_t kNegatives = kFiniteHalfs / 2;
    return position < kNegatives ? kLowestFinite - position : position - kNegatives;
}

} // namespace Color
