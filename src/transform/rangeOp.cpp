#include "transform/rangeOp.h"

#include "transform/opParameters.h"
#include "utils/exception.h"

#include <cmath>
#include <limits>

namespace Color {

namespace {

constexpr double kNotSet = std::numeric_limits<double>::quiet_NaN();
constexpr double kTolerance = 1e-6;

bool isSet(double limit) { return !std::isnan(limit); }

double maxOf(BitDepth depth) { return static_cast<double>(getBitDepthMaxValue(depth)); }

/// The limit, pulled inside the range of the depth.
double insideRange(double limit, BitDepth depth)
{
    if (limit < 0.0) return 0.0;
    return limit > maxOf(depth) ? maxOf(depth) : limit;
}

/// Relative to the value, except for one so small that it might be 0.
bool differs(double value, double ratio)
{
    const double difference = std::fabs(value) < 0.001 ? value - ratio : 1.0 - ratio / value;
    return std::fabs(difference) > kTolerance;
}

} // namespace

RangeOp::RangeOp() : RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

RangeOp::RangeOp(BitDepth in, BitDepth out) : RangeOp(in, out, {}, {}, {}) {}

RangeOp::RangeOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                 const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_minIn(kNotSet), m_maxIn(kNotSet), m_minOut(kNotSet), m_maxOut(kNotSet)
{
    derive();
}

RangeOp::RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut)
    : Op(in, out), m_minIn(minIn), m_maxIn(maxIn), m_minOut(minOut), m_maxOut(maxOut)
{
    derive();
}

Op* RangeOp::clone() const { return new RangeOp(*this); }

void RangeOp::setInBitDepth(BitDepth depth)
{
    const double factor = maxOf(depth) / maxOf(getInBitDepth());
    Op::setInBitDepth(depth);
    m_minIn *= factor;
    m_maxIn *= factor;
    derive();
}

void RangeOp::setOutBitDepth(BitDepth depth)
{
    const double factor = maxOf(depth) / maxOf(getOutBitDepth());
    Op::setOutBitDepth(depth);
    m_minOut *= factor;
    m_maxOut *= factor;
    derive();
}

void RangeOp::validate()
{
    Op::validate();
    if (isSet(m_minIn) != isSet(m_minOut)) {
        raise(LogCategory::TRANSFORM_RANGE, ErrorIds::RANGE_LIMITS_NOT_PAIRED, "Min");
    }
    if (isSet(m_maxIn) != isSet(m_maxOut)) {
        raise(LogCategory::TRANSFORM_RANGE, ErrorIds::RANGE_LIMITS_NOT_PAIRED, "Max");
    }
    // Neither comparison holds where a limit is not set.
    if (m_minIn > m_maxIn || m_minOut > m_maxOut) {
        raise(LogCategory::TRANSFORM_RANGE, ErrorIds::RANGE_MAX_LESS_THAN_MIN);
    }
}

OpType RangeOp::getOpType() const { return OP_RANGE; }

const std::string& RangeOp::getOpTypeName() const
{
    static const std::string typeName = "Range";
    return typeName;
}

bool RangeOp::isNoOp() const
{
    return !isSet(m_minIn) && !isSet(m_maxIn) && !scalesOtherThan(maxOf(getOutBitDepth()) / maxOf(getInBitDepth()));
}

bool RangeOp::isEqual(const Op& other) const
{
    const auto* range = dynamic_cast<const RangeOp*>(&other);
    return range && Op::isEqual(other) && isSameValue(m_minIn, range->m_minIn) &&
           isSameValue(m_maxIn, range->m_maxIn) && isSameValue(m_minOut, range->m_minOut) &&
           isSameValue(m_maxOut, range->m_maxOut);
}

void RangeOp::derive()
{
    m_alphaScale = maxOf(getOutBitDepth()) / maxOf(getInBitDepth());
    m_scale = m_alphaScale;
    m_offset = 0.0;
    if (isSet(m_minIn) && isSet(m_maxIn)) {
        const double width = m_maxIn - m_minIn;
        if (std::fabs(width) < kTolerance) raise(LogCategory::TRANSFORM_RANGE, ErrorIds::RANGE_IN_LIMITS_TOO_CLOSE);
        m_scale = (m_maxOut - m_minOut) / width;
        m_offset = m_minOut - m_scale * m_minIn;
    } else if (isSet(m_maxIn)) {
        m_offset = m_maxOut - m_maxIn * m_scale;
    } else if (isSet(m_minIn)) {
        m_offset = m_minOut - m_minIn * m_scale;
    }
    m_lowerBound = makeBound(m_minIn, m_minIn < 0.0, m_minOut, 0.0);
    m_upperBound = makeBound(m_maxIn, m_maxIn > maxOf(getInBitDepth()), m_maxOut, maxOf(getOutBitDepth()));
}

bool RangeOp::scalesOtherThan(double ratio) const
{
    return std::fabs(m_offset) > kTolerance || differs(m_scale, ratio) || differs(m_alphaScale, ratio);
}

double RangeOp::makeBound(double limitIn, bool isBeyondInputs, double limitOut, double endOut) const
{
    if (isBeyondInputs && isIntegerDepth(getInBitDepth())) return kNotSet;
    if (isFloatDepth(getOutBitDepth())) return limitOut;
    return isSet(limitIn) ? insideRange(limitOut, getOutBitDepth()) : endOut;
}

} // namespace Color
