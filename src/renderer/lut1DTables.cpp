#include "renderer/lut1DTables.h"

#include "renderer/finiteEntry.h"
#include "renderer/halfConversion.h"
#include "renderer/lutComposition.h"
#include "utils/exception.h"

#include <algorithm>

namespace Rendering {

namespace {

using Color::Lut1DOp;
using Color::ErrorIds::CPU_OP_ATTRIBUTE_ILLEGAL;
using Color::LogCategory::RENDERER_CPU;

bool isKnown(BitDepth depth) { return getBitDepthMaxValue(depth) > 0.f; }

/// True when position i of the op's array belongs to code i of its in depth.
bool isAddressedByCode(const Lut1DOp& op)
{
    const BitDepth in = op.getInBitDepth();
    if (op.isHalfDomain()) return in == BIT_DEPTH_16f;
    return isIntegerDepth(in) && static_cast<float>(op.getArray().getLength()) == getBitDepthValueRange(in) + 1.f;
}

std::unique_ptr<Lut1DOp> sampledPerCode(const Lut1DOp& op)
{
    const BitDepth in = op.getInBitDepth();
    const Lut1DOp identity(in, in, isFloatDepth(in) ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE);
    return compose(identity, op, identity.getArray().getLength());
}

float roundedToHalf(float value)
{
    return _mm_cvtss_f32(floatFromHalf(_mm_and_si128(halfFromFloat(_mm_set1_ps(value)), _mm_set1_epi32(0xffff))));
}

/// What becomes of an entry of the op on its way into a table.
class EntryRule
{
public:
    explicit EntryRule(const Lut1DOp& op)
        : m_isInteger(isIntegerDepth(op.getOutBitDepth())), m_isHalf(op.getOutBitDepth() == BIT_DEPTH_16f),
          m_keepsFloats(op.getHueAdjust() != Lut1DOp::HUE_ADJUST_NONE),
          m_maximum(getBitDepthMaxValue(op.getOutBitDepth()))
    {}

    float operator()(float value) const
    {
        if (m_isInteger) {
            const float entry = clampedToInteger(value);
            if (m_keepsFloats) return entry;
            return entry > 0.f ? static_cast<float>(static_cast<int32_t>(entry)) : 0.f; // a NaN becomes 0
        }
        const float entry = finiteEntry(value);
        return m_isHalf && !m_keepsFloats ? roundedToHalf(entry) : entry;
    }

private:
    /// Adds the half that rounds up and clamps to the depth. A NaN passes.
    float clampedToInteger(float value) const
    {
        const float sum = value + 0.5f;
        if (sum > m_maximum) return m_maximum;
        return sum < 0.f ? 0.f : sum;
    }

    bool m_isInteger;
    bool m_isHalf;
    bool m_keepsFloats;
    float m_maximum;
};

} // namespace

void checkDepthsAndInterpolation(const Lut1DOp& op)
{
    const std::string& name = op.getDisplayName();
    if (!isKnown(op.getInBitDepth())) Color::raise(RENDERER_CPU, CPU_OP_ATTRIBUTE_ILLEGAL, name, "InputBitDepth");
    if (!isKnown(op.getOutBitDepth())) Color::raise(RENDERER_CPU, CPU_OP_ATTRIBUTE_ILLEGAL, name, "OutputBitDepth");
    if (op.getInterpolation() > Lut1DOp::INTERPOLATION_LINEAR) {
        Color::logFailure(RENDERER_CPU, CPU_OP_ATTRIBUTE_ILLEGAL, name, "Interpolation");
    }
}

void checkArray(const Lut1DOp& op)
{
    const Color::Array& array = op.getArray();
    const std::size_t count = array.getNumValues(array.getLength(), array.getNumColorComponents());
    if (count == 0 || count != array.getValues().size()) {
        Color::raise(Color::LogCategory::TRANSFORM_LUT_1D, Color::ErrorIds::ARRAY_CONTENT_ILLEGAL);
    }
}

ChannelTables makeChannelTables(const Lut1DOp& op)
{
    std::unique_ptr<const Lut1DOp> sampled;
    if (op.getInBitDepth() != BIT_DEPTH_32f && !isAddressedByCode(op)) sampled = sampledPerCode(op);
    const Color::Array& array = (sampled ? *sampled : op).getArray();
    const Color::Array::Values& values = array.getValues();
    const std::size_t components = array.getNumColorComponents();
    const EntryRule rule(op);

    ChannelTables tables;
    for (std::size_t channel = 0; channel < tables.size(); ++channel) {
        std::vector<float>& table = tables[channel];
        table.resize(array.getLength());
        const float* value = values.data() + std::min(channel, components - 1);
        for (float& entry : table) {
            entry = rule(*value);
            value += components;
        }
    }
    return tables;
}

} // namespace Rendering
