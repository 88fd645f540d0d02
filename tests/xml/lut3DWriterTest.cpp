#include "tests/xml/written.h"

#include "transform/lut3DOp.h"

#include <cmath>
#include <random>

using namespace Color;

TEST(Lut3DWriter, writesItsCube)
{
    Lut3DOp op(BIT_DEPTH_10i, BIT_DEPTH_8i, 2);
    Ctf::expectWritten(op, "<LUT3D inBitDepth=\"10i\" outBitDepth=\"8i\">\n"
                           "   <Array dim=\"2 2 2 3\">\n"
                           "  0   0   0\n"
                           "  0   0 255\n"
                           "  0 255   0\n"
                           "  0 255 255\n"
                           "255   0   0\n"
                           "255   0 255\n"
                           "255 255   0\n"
                           "255 255 255\n"
                           "   </Array>\n"
                           "</LUT3D>\n");
}

TEST(Lut3DWriter, writesItsInterpolation)
{
    const struct
    {
        Lut3DOp::Interpolation interpolation;
        const char* attribute;
    } rows[] = {
        {Lut3DOp::INTERPOLATION_DEFAULT, ""},
        {Lut3DOp::INTERPOLATION_TRILINEAR, " interpolation=\"trilinear\""},
        {Lut3DOp::INTERPOLATION_TETRAHEDRAL, " interpolation=\"tetrahedral\""},
        {Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL, " interpolation=\"4pt tetrahedral\""},
    };
    for (const auto& row : rows) {
        Lut3DOp op(BIT_DEPTH_12i, BIT_DEPTH_16i, 1);
        op.setInterpolation(row.interpolation);
        Ctf::expectWritten(op, std::string("<LUT3D inBitDepth=\"12i\" outBitDepth=\"16i\"") + row.attribute +
                                   ">\n   <Array dim=\"1 1 1 3\">\n    0     0     0\n   </Array>\n</LUT3D>\n");
    }
}

TEST(Lut3DWriter, keepsEightDigitsOfAFloatAndTheTextAfterwards)
{
    Lut3DOp op(9);
    std::mt19937 random(7);
    for (float& value : op.getArray().getValues())
        value = std::ldexp(static_cast<float>(random() >> 8) / 0x1p24F, static_cast<int>(random() % 40) - 20);
    const std::string text = Ctf::writeOp(op);
    const auto transform = Ctf::read(Ctf::document(text));
    const auto& readBack = Ctf::getOp<Lut3DOp>(transform);
    for (std::size_t i = 0; i < op.getArray().getValues().size(); ++i) {
        const double value = static_cast<double>(op.getArray().getValues()[i]);
        ASSERT_NEAR(static_cast<double>(readBack.getArray().getValues()[i]), value, value * 1e-7) << i;
    }
    EXPECT_EQ(Ctf::writeOp(readBack), text);
}
