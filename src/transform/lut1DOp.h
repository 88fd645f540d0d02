#pragma once

#include "transform/array.h"
#include "transform/indexMapping.h"
#include "transform/op.h"

namespace Color {

/// One curve per colour channel, by table look-up. Entries are in the scale of the output depth; the input depth only
/// decides how an input addresses the table: position i stands for i * range(in) / (length - 1), or with half domain
/// for the half float of the bit pattern i.
class Lut1DOp : public Op
{
public:
    enum Interpolation : uint32_t
    {
        INTERPOLATION_DEFAULT = 0,
        INTERPOLATION_LINEAR = 1,
        INTERPOLATION_CUBIC = 2,
    };

    enum HueAdjust : uint32_t
    {
        HUE_ADJUST_NONE = 0,
        HUE_ADJUST_DW3 = 1, ///< the middle one of the three channels keeps its place between the other two
    };

    static constexpr uint32_t kHalfDomainLength = 65536;
    /// Positions are found in float, which counts exactly to here.
    static constexpr uint32_t kMaximumLength = 1U << 24;

    /// Entries of all components interleaved: component c of position i stands at i * numColorComponents + c.
    class Lut3by1DArray : public Array
    {
    public:
        /// The identity of three components: one entry per code of an integer in depth, else 65536.
        Lut3by1DArray(BitDepth in, BitDepth out, HalfFlags flags);
        /// The identity of three components and this length; 0 when there is one entry only. Throws 0x2010005 on a
        /// length above kMaximumLength, before it takes memory.
        Lut3by1DArray(BitDepth out, HalfFlags flags, uint32_t length);

        std::size_t getNumValues(uint32_t length, uint32_t numColorComponents) const override;
        /// Also throws 0x2010005 on a length above kMaximumLength, and when there are neither one nor three components.
        void validate() override;
        /// Throws 0x2010005 on a length above kMaximumLength.
        static void checkLength(uint32_t length);

        /// Takes one curve for all three components. It must not be longer than kMaximumLength.
        void setSingleCurve(const Values& curve);
        /// Whether a single curve was given for all components: a file then holds it once. Values may have been changed
        /// since.
        bool isSingleCurve() const { return m_isSingleCurve; }

    private:
        bool m_isSingleCurve = false;
    };

    /// Both depths 32f.
    explicit Lut1DOp(uint32_t length);
    Lut1DOp(BitDepth in, BitDepth out, HalfFlags flags);
    Lut1DOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name, const Descriptions& descriptions,
            Interpolation interpolation, uint32_t length, HalfFlags flags);
    Lut1DOp(const Lut1DOp& other) = default;

    Op* clone() const override;
    /// Rescales the table.
    void setOutBitDepth(BitDepth depth) override;
    /// Throws what the array throws, 0x2010004 or 0x2010005, with the text of 0x2010003 behind, and 0x204000e when a
    /// half-domain table has not 65536 entries.
    void validate() override;
    OpType getOpType() const override;
    const std::string& getOpTypeName() const override;
    bool isNoOp() const override;
    bool isEqual(const Op& other) const override;
    /// Throws 0x2010014 with hue adjust, 0x2040012 with raw halfs.
    void appendInverse(OpList& list) const override;
    float getMinimumVersion() const override;

    /// Throws as validate() does on a length above kMaximumLength, and with half domain on any but 65536: to be asked
    /// before a table is made room for.
    void checkLength(uint32_t length) const;

    Interpolation getInterpolation() const { return m_interpolation; }
    void setInterpolation(Interpolation interpolation) { m_interpolation = interpolation; }
    /// "default" for a value that is none.
    static const char* getInterpolationName(Interpolation interpolation);
    /// The interpolation of this very name; the default one for a text that is none.
    static Interpolation interpolationNamed(const std::string& text);
    const Lut3by1DArray& getArray() const { return m_array; }
    Lut3by1DArray& getArray() { return m_array; }
    const IndexMapping& getIndexMapping() const { return m_indexMapping; }
    IndexMapping& getIndexMapping() { return m_indexMapping; }
    HalfFlags getHalfFlags() const { return m_halfFlags; }
    void setHalfFlags(HalfFlags flags) { m_halfFlags = flags; }
    bool isHalfDomain() const { return (m_halfFlags & HALF_FLAGS_HALF_DOMAIN) != 0; }
    bool hasRawHalfs() const { return (m_halfFlags & HALF_FLAGS_RAW_HALFS) != 0; }
    HueAdjust getHueAdjust() const { return m_hueAdjust; }
    void setHueAdjust(HueAdjust hueAdjust) { m_hueAdjust = hueAdjust; }
    /// "none" or "dw3".
    static const char* getHueAdjustName(HueAdjust hueAdjust);

protected:
    /// The other op's table and texts between other depths, nothing rescaled; hue adjust and bypass start anew.
    Lut1DOp(BitDepth in, BitDepth out, const Lut1DOp& table);

    /// Whether there are values, and as many as the length, the components and the domain ask for.
    bool isTableSound() const;
    /// isNoOp() for a table whose entries are in the scale of the depth. A plain entry may be off by 1e-6 of the range,
    /// one of a half domain by one half code; -0 and 0 are neighbours.
    bool isIdentityAt(BitDepth depth) const;
    void scaleArray(float factor);
    /// setOutBitDepth() without the rescaling.
    void storeOutBitDepth(BitDepth depth) { Op::setOutBitDepth(depth); }

private:
    void checkHalfDomain(uint32_t length) const;

    Interpolation m_interpolation;
    Lut3by1DArray m_array;
    IndexMapping m_indexMapping;
    HalfFlags m_halfFlags;
    HueAdjust m_hueAdjust = HUE_ADJUST_NONE;
};

} // namespace Color
