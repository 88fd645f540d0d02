#include "xml/matrixElt.h"

#include "tests/xml/ctf.h"

#include <numeric>

using namespace Color;

namespace {

/// The numbers from 1 to count.
std::string numbers(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += std::to_string(i) + " ";
    return text;
}

std::string matrix(const std::string& dim, int count, const std::string& version)
{
    return Ctf::document(Ctf::matrix("<Array dim='" + dim + "'>" + numbers(count) + "</Array>"), version);
}

void expectMatrix(const ColorTransformPtr& transform, const std::vector<float>& values,
                  const MatrixOp::Offsets& offsets)
{
    const auto& op = Ctf::getOp<MatrixOp>(transform);
    EXPECT_EQ(op.getArray().getLength(), 4u);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 4u);
    EXPECT_EQ(op.getArray().getValues(), values);
    EXPECT_EQ(op.getOffsets(), offsets);
}

} // namespace

TEST(MatrixElt, threeByThreeHasNoOffsets)
{
    expectMatrix(Ctf::read(matrix("3 3 3", 9, "1.2")), {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}, {0, 0, 0, 0});
}

TEST(MatrixElt, fourthColumnIsTheOffsetAndFourthRowIsDropped)
{
    expectMatrix(Ctf::read(matrix("4 4 3", 16, "1.2")), {1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 0, 0, 0, 0, 1},
                 {4, 8, 12, 0});
}

TEST(MatrixElt, isTheFormOfAFileWithoutVersion)
{
    expectMatrix(Ctf::read(matrix("4 4 3", 16, "")), {1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 0, 0, 0, 0, 1}, {4, 8, 12, 0});
    Ctf::expectReadFails(matrix("3 4 3", 12, ""), 0x302000a, "Illegal 'Matrix' dimensions '3 4 3' line 3: test.ctf");
}

TEST(MatrixElt, valuesStandAsTheyAreInTheScaleOfTheDepths)
{
    const auto transform = Ctf::read(Ctf::document("<Matrix inBitDepth='8i' outBitDepth='10i'><Array dim='3 3 3'>" +
                                                   numbers(9) + "</Array></Matrix>"));
    expectMatrix(transform, {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1023.f / 255.f}, {0, 0, 0, 0});
}

TEST(MatrixElt, withoutArrayIsTheScaledIdentity)
{
    const auto transform = Ctf::read(Ctf::document("<Matrix inBitDepth='32f' outBitDepth='8i'/>"));
    expectMatrix(transform, {255, 0, 0, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 0, 0, 255}, {0, 0, 0, 0});
}

TEST(MatrixElt, refusesOtherFormsOfDim)
{
    for (const char* dim : {"3 3", "3 3 3 3", "3 4 3", "3 3 4", "4 4 4", "-3 -3 3", "0 0 3"}) {
        Ctf::expectReadFails(matrix(dim, 9, "1.2"), 0x302000a,
                             std::string("Illegal 'Matrix' dimensions '") + dim + "' line 3: test.ctf");
    }
}

TEST(MatrixElt, refusesOtherSizesOnceTheyAreComplete)
{
    Ctf::expectReadFails(matrix("5 5 3", 25, "1.2"), 0x2010005, "Array content illegal", "COLOR:TRANSFORM:ALL");
    Ctf::expectReadFails(matrix("2 2 3", 4, "1.2"), 0x2010005, "Array content illegal", "COLOR:TRANSFORM:ALL");
}

TEST(MatrixElt, refusesAWrongNumberOfValues)
{
    Ctf::expectReadFails(matrix("3 3 3", 8, "1.2"), 0x302000b,
                         "Expected 3x3 Array values, found 8 in 'Matrix' line 3: test.ctf");
    Ctf::expectReadFails(matrix("4 4 3", 0, "1.2"), 0x302000b,
                         "Expected 4x4 Array values, found 0 in 'Matrix' line 3: test.ctf");
    Ctf::expectReadFails(matrix("3 3 3", 10, "1.2"), 0x302000c,
                         "Expected 3x3 Array, found additional values in 'Matrix' line 3: test.ctf");
    Ctf::expectReadFails(matrix("4 4 3", 17, "1.2"), 0x302000c,
                         "Expected 4x4 Array, found additional values in 'Matrix' line 3: test.ctf");
}

TEST(MatrixElt, absurdSizesTakeNoMemory)
{
    Ctf::expectReadFails(matrix("2147483647 2147483647 3", 2, "1.2"), 0x302000b,
                         "Expected 2147483647x2147483647 Array values, found 2 in 'Matrix' line 3: test.ctf");
}

TEST(MatrixElt, finalizingAnArrayThatWasNeverSizedFails)
{
    Xml::Reader::ReadContext context;
    Xml::Reader::TransformElt parent("ProcessList", context);
    Xml::Reader::MatrixElt old("Matrix", parent, context);
    Xml::Reader::MatrixElt_1_3 recent("Matrix", parent, context);
    Ctf::expectFailure(failureOf([&] { old.finalize(0); }), 0x302000d, "Array state incomplete");
    Ctf::expectFailure(failureOf([&] { recent.finalize(9); }), 0x302000d, "Array state incomplete");
}

TEST(MatrixElt_1_3, threeRowsWithoutOffsets)
{
    expectMatrix(Ctf::read(matrix("3 3 3", 9, "1.3")), {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}, {0, 0, 0, 0});
}

TEST(MatrixElt_1_3, threeRowsWithOffsets)
{
    expectMatrix(Ctf::read(matrix("3 4 3", 12, "1.3")), {1, 2, 3, 0, 5, 6, 7, 0, 9, 10, 11, 0, 0, 0, 0, 1},
                 {4, 8, 12, 0});
}

TEST(MatrixElt_1_3, fourRowsWithoutOffsets)
{
    std::vector<float> values(16);
    std::iota(values.begin(), values.end(), 1.f);
    expectMatrix(Ctf::read(matrix("4 4 4", 16, "1.3")), values, {0, 0, 0, 0});
}

TEST(MatrixElt_1_3, fourRowsWithOffsets)
{
    expectMatrix(Ctf::read(matrix("4 5 4", 20, "1.3")), {1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 16, 17, 18, 19},
                 {5, 10, 15, 20});
}

TEST(MatrixElt_1_3, refusesOtherFormsOfDim)
{
    for (const char* dim : {"4 4 3", "3 3", "3 4 4", "4 3 3", "5 5 5", "4 5 4 4", "3 3 3 3"}) {
        Ctf::expectReadFails(matrix(dim, 9, "1.3"), 0x302000a,
                             std::string("Illegal 'Matrix' dimensions '") + dim + "' line 3: test.ctf");
    }
}

TEST(MatrixElt_1_3, refusesAWrongNumberOfValues)
{
    struct Row
    {
        const char* dim;
        int capacity;
        const char* size;
        const char* square;
    };
    for (const Row& row : {Row{"3 3 3", 9, "3x3x3", "3x3"}, Row{"3 4 3", 12, "3x4x3", "4x4"},
                           Row{"4 4 4", 16, "4x4x4", "4x4"}, Row{"4 5 4", 20, "4x5x4", "5x5"}}) {
        const int tooFew = row.capacity - 1;
        Ctf::expectReadFails(matrix(row.dim, tooFew, "1.6"), 0x302000b,
                             std::string("Expected ") + row.size + " Array values, found " + std::to_string(tooFew) +
                                 " in 'Matrix' line 3: test.ctf");
        Ctf::expectReadFails(matrix(row.dim, row.capacity + 1, "1.6"), 0x302000c,
                             std::string("Expected ") + row.square +
                                 " Array, found additional values in 'Matrix' line 3: test.ctf");
    }
    Ctf::expectReadFails(matrix("3 4 3", 9, "1.3"), 0x302000b,
                         "Expected 3x4x3 Array values, found 9 in 'Matrix' line 3: test.ctf");
}

TEST(MatrixElt_1_3, namesTheLineWhereTheArrayEnds)
{
    Ctf::expectReadFails(Ctf::document(Ctf::matrix("<Array dim='3 3 3'>\n1\n2\n</Array>")), 0x302000b,
                         "Expected 3x3x3 Array values, found 2 in 'Matrix' line 6: test.ctf");
}
