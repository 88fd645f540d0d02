#include "tests/xml/written.h"

#include "transform/invLut1DOp.h"

#include <Imath/half.h>
#include <cmath>
#include <limits>

using namespace Color;

namespace {

Lut1DOp lutOf(BitDepth in, BitDepth out, const std::vector<float>& values, HalfFlags flags = HALF_FLAGS_NONE)
{
    Lut1DOp op(in, out, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, static_cast<uint32_t>(values.size() / 3), flags);
    op.getArray().getValues() = values;
    return op;
}

/// The numbers of the only array in the text.
std::string arrayOf(const std::string& text)
{
    const std::size_t begin = text.find(">\n", text.find("<Array")) + 2;
    return text.substr(begin, text.find("   </Array>") - begin);
}

/// -0 and NaN included.
void expectSameBits(const Array::Values& a, const Array::Values& b)
{
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool isSame =
            std::isnan(a[i]) ? std::isnan(b[i]) : a[i] == b[i] && std::signbit(a[i]) == std::signbit(b[i]);
        EXPECT_TRUE(isSame) << i << ": " << a[i] << " " << b[i];
    }
}

} // namespace

TEST(Lut1DWriter, writesThreeCurves)
{
    Lut1DOp op = lutOf(BIT_DEPTH_8i, BIT_DEPTH_10i, {0, 1, 2, 511.5F, 512, 513, 1023, 1022, 1021});
    op.setInterpolation(Lut1DOp::INTERPOLATION_CUBIC);
    Ctf::expectWritten(op, "<LUT1D inBitDepth=\"8i\" outBitDepth=\"10i\" interpolation=\"cubic\">\n"
                           "   <Array dim=\"3 3\">\n"
                           "   0    1    2\n"
                           "511.5  512  513\n"
                           "1023 1022 1021\n"
                           "   </Array>\n"
                           "</LUT1D>\n");
}

TEST(Lut1DWriter, writesASingleCurveOnce)
{
    Lut1DOp op(2);
    op.getArray().setSingleCurve({0, 0.5F, 1});
    Ctf::expectWritten(op, "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                           "   <Array dim=\"3 1\">\n"
                           "              0\n"
                           "            0.5\n"
                           "              1\n"
                           "   </Array>\n"
                           "</LUT1D>\n");
}

TEST(Lut1DWriter, writesThreeCurvesThoughTheyAreTheSame)
{
    Lut1DOp op(2);
    Ctf::expectWritten(op, "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                           "   <Array dim=\"2 3\">\n"
                           "              0               0               0\n"
                           "              1               1               1\n"
                           "   </Array>\n"
                           "</LUT1D>\n");
}

TEST(Lut1DWriter, writesAsManyCurvesAsWereRead)
{
    const std::string arrays[] = {"<Array dim=\"3 1\">\n"
                                  "              0\n"
                                  "            0.5\n"
                                  "              1\n",
                                  "<Array dim=\"3 3\">\n"
                                  "              0               0               0\n"
                                  "            0.5             0.5             0.5\n"
                                  "              1               1               1\n"};
    for (const std::string element : {"LUT1D", "InverseLUT1D"}) {
        for (const std::string& array : arrays) {
            const std::string text = "<" + element + " inBitDepth=\"32f\" outBitDepth=\"32f\">\n   " + array +
                                     "   </Array>\n</" + element + ">\n";
            EXPECT_EQ(Ctf::writeOp(*Ctf::read(Ctf::document(text))->getOpList().get(0)), text);
        }
    }
}

TEST(Lut1DWriter, aSingleCurveStaysOneWhenItIsInverted)
{
    Lut1DOp op(2);
    op.getArray().setSingleCurve({0, 0.25F, 1});
    OpList list;
    op.appendInverse(list);
    list.get(0)->appendInverse(list);
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_NE(Ctf::writeOp(*list.get(i)).find("<Array dim=\"3 1\">"), std::string::npos);
}

TEST(Lut1DWriter, writesThreeCurvesWhenASingleOneWasChangedInOneChannelOrInASign)
{
    for (const float changed : {0.5F, -0.F}) {
        Lut1DOp op(2);
        op.getArray().setSingleCurve({0, 1});
        op.getArray().setValue(1, changed);
        EXPECT_NE(Ctf::writeOp(op).find("<Array dim=\"2 3\">"), std::string::npos);
    }
}

TEST(Lut1DWriter, writesAnArrayThatHoldsOneCurve)
{
    Lut1DOp op(2);
    op.getArray().resize(3, 1);
    op.getArray().getValues() = {0, 0.25F, 1};
    EXPECT_EQ(Ctf::writeOp(op), "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                "   <Array dim=\"3 1\">\n"
                                "              0\n"
                                "           0.25\n"
                                "              1\n"
                                "   </Array>\n"
                                "</LUT1D>\n");
}

TEST(Lut1DWriter, writesEveryAttributeInOrder)
{
    Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_16f, HALF_FLAGS_HALF_DOMAIN_RAW_HALFS);
    op.setInterpolation(Lut1DOp::INTERPOLATION_LINEAR);
    op.setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    const std::string text = Ctf::writeOp(op);
    EXPECT_EQ(text.substr(0, text.find('\n')), "<LUT1D inBitDepth=\"16f\" outBitDepth=\"16f\" interpolation=\"linear\" "
                                               "halfDomain=\"true\" rawHalfs=\"true\" hueAdjust=\"dw3\">");
    // The identity of a half domain holds each half at the place of its pattern.
    EXPECT_NE(text.find("   <Array dim=\"65536 3\">\n    0     0     0\n    1     1     1\n"), std::string::npos);
    EXPECT_NE(text.find("\n65534 65534 65534\n65535 65535 65535\n   </Array>\n"), std::string::npos);

    const auto transform = Ctf::read(Ctf::document(text));
    const auto& readBack = Ctf::getOp<Lut1DOp>(transform);
    EXPECT_EQ(readBack.getHalfFlags(), HALF_FLAGS_HALF_DOMAIN_RAW_HALFS);
    EXPECT_EQ(readBack.getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    expectSameBits(readBack.getArray().getValues(), op.getArray().getValues());
    EXPECT_EQ(Ctf::writeOp(readBack), text);
}

TEST(Lut1DWriter, writesRawHalfsOfThreeCurvesInGroups)
{
    Lut1DOp op = lutOf(BIT_DEPTH_32f, BIT_DEPTH_16f, {0, -0.F, 1, 0.5F, 2, 65504}, HALF_FLAGS_RAW_HALFS);
    Ctf::expectWritten(op, "<LUT1D inBitDepth=\"32f\" outBitDepth=\"16f\" rawHalfs=\"true\">\n"
                           "   <Array dim=\"2 3\">\n"
                           "    0 32768 15360\n"
                           "14336 16384 31743\n"
                           "   </Array>\n"
                           "</LUT1D>\n");
}

TEST(Lut1DWriter, everyHalfSurvivesTheDepth16f)
{
    const Lut1DOp op(BIT_DEPTH_16f, BIT_DEPTH_16f, HALF_FLAGS_HALF_DOMAIN);
    const auto transform = Ctf::read(Ctf::document(Ctf::writeOp(op)));
    const auto& readBack = Ctf::getOp<Lut1DOp>(transform);
    ASSERT_EQ(readBack.getArray().getValues().size(), 3U * 65536U);
    // Five digits tell all halfs apart, if not all floats.
    for (std::size_t i = 0; i < op.getArray().getValues().size(); ++i) {
        const Imath::half value = op.getArray().getValues()[i];
        const Imath::half again = readBack.getArray().getValues()[i];
        ASSERT_TRUE(again.bits() == value.bits() || (again.isNan() && value.isNan())) << i;
    }
}

TEST(Lut1DWriter, specialValuesSurvive)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const BitDepth depth : {BIT_DEPTH_8i, BIT_DEPTH_16f, BIT_DEPTH_32f}) {
        const Lut1DOp op = lutOf(BIT_DEPTH_32f, depth, {nan, kInfinity, -kInfinity, -0.F, 0, std::copysign(nan, -1.F)});
        const auto transform = Ctf::read(Ctf::document(Ctf::writeOp(op)));
        expectSameBits(Ctf::getOp<Lut1DOp>(transform).getArray().getValues(), op.getArray().getValues());
    }
    EXPECT_EQ(arrayOf(Ctf::writeOp(lutOf(BIT_DEPTH_32f, BIT_DEPTH_16f, {nan, kInfinity, -kInfinity}))),
              "        nan         inf        -inf\n");
}

TEST(Lut1DWriter, refusesAnUnknownDepth)
{
    Lut1DOp op(2);
    op.Op::setOutBitDepth(BIT_DEPTH_UNKNOWN);
    Ctf::expectFailure(failureOf([&] { Ctf::writeOp(op); }), 0x3030005, "BitDepth unknown", "COLOR:XML:WRITER");
}

TEST(InvLut1DWriter, differsInItsTag)
{
    InvLut1DOp op(lutOf(BIT_DEPTH_8i, BIT_DEPTH_32f, {0, 0, 0, 0.25F, 0.5F, 0.75F, 1, 1, 1}));
    op.setInterpolation(Lut1DOp::INTERPOLATION_LINEAR);
    // Numbers are laid out by the output depth, although they are in the scale of the input depth.
    Ctf::expectWritten(op, "<InverseLUT1D inBitDepth=\"32f\" outBitDepth=\"8i\" interpolation=\"linear\">\n"
                           "   <Array dim=\"3 3\">\n"
                           "  0   0   0\n"
                           "0.25 0.5 0.75\n"
                           "  1   1   1\n"
                           "   </Array>\n"
                           "</InverseLUT1D>\n");
}

TEST(InvLut1DWriter, writesRawHalfsAsPatterns)
{
    Lut1DOp lut(BIT_DEPTH_16f, BIT_DEPTH_32f, HALF_FLAGS_NONE);
    lut.getArray().setSingleCurve({0, 0.5F, 1});
    InvLut1DOp op(lut);
    op.setHalfFlags(HALF_FLAGS_RAW_HALFS);
    EXPECT_EQ(Ctf::writeOp(op), "<InverseLUT1D inBitDepth=\"32f\" outBitDepth=\"16f\" rawHalfs=\"true\">\n"
                                "   <Array dim=\"3 1\">\n"
                                "    0\n"
                                "14336\n"
                                "15360\n"
                                "   </Array>\n"
                                "</InverseLUT1D>\n");
}
