#include "transform/ditherOp.h"

#include "utils/exception.h"

namespace Color {

DitherOp::DitherOp() : DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

DitherOp::DitherOp(BitDepth in, BitDepth out) : DitherOp(in, out, BIT_DEPTH_UNKNOWN) {}

DitherOp::DitherOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
                   const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_ditherBitDepth(BIT_DEPTH_UNKNOWN)
{}

DitherOp::DitherOp(BitDepth in, BitDepth out, BitDepth ditherBitDepth) : Op(in, out), m_ditherBitDepth(ditherBitDepth)
{}

Op* DitherOp::clone() const { return new DitherOp(*this); }

void DitherOp::validate()
{
    Op::validate();
    if (m_ditherBitDepth == BIT_DEPTH_UNKNOWN) {
        raise(LogCategory::TRANSFORM_ALL, ErrorIds::ATTRIBUTE_MISSING, "DitherBitDepth", getDisplayName());
    }
}

OpType DitherOp::getOpType() const { return OP_DITHER; }

const std::string& DitherOp::getOpTypeName() const
{
    static const std::string typeName = "Dither";
    return typeName;
}

bool DitherOp::isNoOp() const { return !hasEffect(getInBitDepth(), m_ditherBitDepth); }

bool DitherOp::hasEffect(BitDepth in, BitDepth dither)
{
    if (in == dither || isFloatDepth(dither)) return false;
    return !isIntegerDepth(in) || getBitDepthPrecision(in) >= getBitDepthPrecision(dither);
}

bool DitherOp::isEqual(const Op& other) const
{
    const auto* dither = dynamic_cast<const DitherOp*>(&other);
    return dither && Op::isEqual(other) && m_ditherBitDepth == dither->m_ditherBitDepth;
}

} // namespace Color
