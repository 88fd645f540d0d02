#include "tests/xml/ctf.h"

#include <cmath>
#include <limits>

using namespace Color;

namespace {

/// A 3 by 3 matrix array with this text.
std::string array(const std::string& text) { return "<Array dim='3 3 3'>" + text + "</Array>"; }

const MatrixOp::MatrixArray::Values& valuesOf(const ColorTransformPtr& transform)
{
    return Ctf::getOp<MatrixOp>(transform).getArray().getValues();
}

} // namespace

TEST(ArrayElt, separatesNumbersByWhiteSpaceCommasAndLines)
{
    const auto transform = Ctf::read(Ctf::document(Ctf::matrix(array("1 2,3 , 4\n\t5\n\n6,,7\n8 9"))));
    const std::vector<float> expected = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1};
    EXPECT_EQ(valuesOf(transform), expected);
}

TEST(ArrayElt, readsEveryFormOfNumber)
{
    const auto transform =
        Ctf::read(Ctf::document(Ctf::matrix(array("nan -INF Infinity\n1e3 -.5 0x10\nNANX 1e99 7abc"))));
    const auto& values = valuesOf(transform);
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], -infinity);
    EXPECT_EQ(values[2], infinity);
    EXPECT_EQ(values[4], 1000.f);
    EXPECT_EQ(values[5], -0.5f);
    EXPECT_EQ(values[6], 16.f);
    EXPECT_TRUE(std::isnan(values[8]));
    EXPECT_EQ(values[9], infinity);
    EXPECT_EQ(values[10], 7.f);
}

TEST(ArrayElt, namesTheWholeChunkOfAnIllegalValue)
{
    for (const char* chunk : {"4 INFX 6", "4 five 6", "4 - 6", "-INFINIT"}) {
        Ctf::expectReadFails(Ctf::document(Ctf::matrix(array(std::string("1 2 3\n ") + chunk + " \n7 8 9"))), 0x302000e,
                             std::string("Illegal values '") + chunk + "' in 'Matrix' line 4: test.ctf");
    }
}

TEST(ArrayElt, requiresDim)
{
    Ctf::expectReadFails(Ctf::document(Ctf::matrix("<Array dimension='3 3 3'>1</Array>")), 0x3020006,
                         "Required attribute 'dim' missing in 'Matrix' line 3: test.ctf");
    Ctf::expectReadFails(Ctf::document(Ctf::matrix("<Array/>")), 0x3020006,
                         "Required attribute 'dim' missing in 'Matrix' line 3: test.ctf");
}

TEST(ArrayElt, matchesDimWithoutRegardToCaseAndAllowsCommas)
{
    const auto transform = Ctf::read(Ctf::document(Ctf::matrix("<Array DIM=' 3.0, 3,3 '>1 2 3 4 5 6 7 8 9</Array>")));
    EXPECT_EQ(valuesOf(transform)[10], 9.f);
}

TEST(ArrayElt, refusesDimensionsThatAreNoListOfWholeNumbers)
{
    for (const char* dim : {"", " ", "9", "3 3 three", "3 3 3.5", "3 3 nan", "3 3 4294967296", "3 3 1e99", ",,"}) {
        Ctf::expectReadFails(Ctf::document(Ctf::matrix(std::string("<Array dim='") + dim + "'>1</Array>")), 0x302000a,
                             std::string("Illegal 'Matrix' dimensions '") + dim + "' line 3: test.ctf");
    }
}

TEST(ArrayElt, surplusValueIsRefusedOnItsLine)
{
    Ctf::expectReadFails(Ctf::document(Ctf::matrix(array("1 2 3\n4 5 6\n7 8 9 10"))), 0x302000c,
                         "Expected 3x3 Array, found additional values in 'Matrix' line 5: test.ctf");
}

TEST(ArrayElt, skipsElementsInside)
{
    const auto transform =
        Ctf::read(Ctf::document(Ctf::matrix(array("1 2 3 <Foo>100 <Bar/> 200</Foo> 4 5 6 <Array>1</Array>7 8 9"))));
    const std::vector<float> expected = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1};
    EXPECT_EQ(valuesOf(transform), expected);
}

TEST(ArrayElt, neverCutsANumberInTwo)
{
    // expat hands over entities and characters of its own conversion as pieces.
    const auto transform = Ctf::read("<!DOCTYPE ProcessList [<!ENTITY half '.5'>]>\n" +
                                     Ctf::document(Ctf::matrix(array("1&half; 2&#46;25 3 4 5 6 7 8 9"))));
    EXPECT_EQ(valuesOf(transform)[0], 1.5f);
    EXPECT_EQ(valuesOf(transform)[1], 2.25f);
}
