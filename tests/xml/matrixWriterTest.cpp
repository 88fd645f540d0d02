#include "tests/xml/written.h"

using namespace Color;

namespace {

constexpr float kValues[] = {1.5F, 0.25F, -0.125F, 0, 0, 2, 0, 0, 0.1F, 0, 3, 0, 0, 0, 0, 1};

MatrixOp matrix(float alphaRed = 0.F)
{
    MatrixOp op;
    op.setMatrix4x4(kValues);
    op.getArray().setValue(12, alphaRed);
    return op;
}

std::string element(const std::string& array)
{
    return "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n" + array + "   </Array>\n</Matrix>\n";
}

} // namespace

TEST(MatrixWriter, writesThreeRows)
{
    MatrixOp op = matrix();
    Ctf::expectWritten(op, element("   <Array dim=\"3 3 3\">\n"
                                   "            1.5            0.25          -0.125\n"
                                   "              0               2               0\n"
                                   "            0.1               0               3\n"));
}

TEST(MatrixWriter, writesThreeRowsWithOffsets)
{
    MatrixOp op = matrix();
    op.setOffset(1, 0.5F);
    Ctf::expectWritten(op, element("   <Array dim=\"3 4 3\">\n"
                                   "            1.5            0.25          -0.125               0\n"
                                   "              0               2               0             0.5\n"
                                   "            0.1               0               3               0\n"));
}

TEST(MatrixWriter, writesFourRows)
{
    MatrixOp op = matrix(0.75F);
    Ctf::expectWritten(op, element("   <Array dim=\"4 4 4\">\n"
                                   "            1.5            0.25          -0.125               0\n"
                                   "              0               2               0               0\n"
                                   "            0.1               0               3               0\n"
                                   "           0.75               0               0               1\n"));
}

TEST(MatrixWriter, writesFourRowsWithOffsets)
{
    MatrixOp op = matrix(0.75F);
    op.setOffset(0, -1e-10F);
    Ctf::expectWritten(op,
                       element("   <Array dim=\"4 5 4\">\n"
                               "            1.5            0.25          -0.125               0          -1e-10\n"
                               "              0               2               0               0               0\n"
                               "            0.1               0               3               0               0\n"
                               "           0.75               0               0               1               0\n"));
}

TEST(MatrixWriter, anOffsetOfAlphaNeedsFourRows)
{
    for (const float offset : {0.125F, -0.F}) {
        MatrixOp op = matrix();
        op.setOffset(3, offset);
        op.validate();
        const std::string text = Ctf::writeOp(op);
        EXPECT_NE(text.find("dim=\"4 5 4\""), std::string::npos);
        EXPECT_TRUE(Ctf::read(Ctf::document(text))->getOpList().get(0)->isEqual(op));
    }
}

TEST(MatrixWriter, theLayoutDoesNotDependOnTheDepths)
{
    MatrixOp op(BIT_DEPTH_8i, BIT_DEPTH_10i);
    op.validate();
    const std::string text = Ctf::writeOp(op);
    EXPECT_EQ(text, "<Matrix inBitDepth=\"8i\" outBitDepth=\"10i\">\n"
                    "   <Array dim=\"3 3 3\">\n"
                    "      4.0117645               0               0\n"
                    "              0       4.0117645               0\n"
                    "              0               0       4.0117645\n"
                    "   </Array>\n"
                    "</Matrix>\n");
    const auto transform = Ctf::read(Ctf::document(text));
    EXPECT_EQ(Ctf::writeOp(*transform->getOpList().get(0)), text);
    EXPECT_EQ(Ctf::getOp<MatrixOp>(transform).getArray().getValues()[15], 1023.F / 255.F);
}
