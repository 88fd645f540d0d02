#pragma once

#include "transform/lut1DOp.h"

#include <array>

namespace Color {

/// The inverse of a Lut1DOp: finds the position in the table at which the curve has the input value. Entries are in the
/// scale of the input depth.
class InvLut1DOp : public Lut1DOp
{
public:
    enum Style : uint32_t
    {
        STYLE_EXACT = 0, ///< a search per value
        STYLE_FAST = 1,  ///< rendered by a forward table made from the search
    };

    /// How the curve of one component runs.
    struct Run
    {
        bool isIncreasing = false;
        // The search goes on between these. Both are 0 for a curve that is flat throughout.
        uint32_t start = 0; ///< the last position whose value is the first one
        uint32_t end = 0;   ///< the first position whose value is the last one
    };

    /// The identity, set up.
    InvLut1DOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
               const Descriptions& descriptions, Interpolation interpolation, uint32_t length, HalfFlags flags);
    /// The inverse of the LUT: depths exchanged. Throws 0x2040012 with raw halfs.
    explicit InvLut1DOp(const Lut1DOp& lut);
    InvLut1DOp(const InvLut1DOp& other) = default;

    Op* clone() const override;
    /// Rescales the table.
    void setInBitDepth(BitDepth depth) override;
    /// A plain store.
    void setOutBitDepth(BitDepth depth) override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    /// Appends a Lut1DOp with the table as it is and the depths exchanged.
    void appendInverse(OpList& list) const override;

    /// A new op has the exact style, or the fast one with half domain, which the exact one does not invert.
    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }
    /// Throws 0x2040010 on null or empty text, 0x2040011 on an unknown one.
    static Style styleNamed(const char* text);
    /// What a new op with these flags has.
    static Style getDefaultStyle(HalfFlags flags)
    {
        return (flags & HALF_FLAGS_HALF_DOMAIN) != 0 ? STYLE_FAST : STYLE_EXACT;
    }
    /// "exact" or "fast"; "" for a value that is no style.
    static const char* getStyleName(Style style);

    /// Makes the curves of the op's own table monotonic, by flat stretches in place of reversals, and finds how they
    /// run. A NaN becomes the value before it, at the start the first number behind it. To be called after every change
    /// of the table other than by a depth; the constructors do it. A half-domain table is walked in the order of its
    /// input values, from the lowest to the highest finite half; infinities and NaNs as inputs keep their entries.
    void setUp();
    /// Of the component 0 red, 1 green, 2 blue. Positions count in the order in which setUp() walks.
    const Run& getRun(std::size_t component) const { return m_runs.at(component); }

    /// The half code at a position of the walk over a half-domain table, from 0 (the lowest finite half) to
    /// kFiniteHalfs - 1. Zero is met twice, first as -0.
    static uint32_t halfCodeAt(uint32_t position);
    static constexpr uint32_t kFiniteHalfs = 2 * 0x7c00;

private:
    Style m_style;
    std::array<Run, 3> m_runs;
};

} // namespace Color
