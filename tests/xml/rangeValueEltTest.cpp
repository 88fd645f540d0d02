#include "tests/xml/ctf.h"

#include <cmath>

using namespace Color;

namespace {

std::string minimums(const std::string& in, const std::string& out)
{
    return Ctf::document(Ctf::range("<minInValue>" + in + "</minInValue>\n<minOutValue>" + out + "</minOutValue>"));
}

} // namespace

TEST(RangeValueElt, widensTheSinglePrecisionNumber)
{
    const auto transform = Ctf::read(minimums("0.1", "-.25"));
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getMinIn(), static_cast<double>(0.1f));
    EXPECT_NE(Ctf::getOp<RangeOp>(transform).getMinIn(), 0.1);
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getMinOut(), -0.25);
}

TEST(RangeValueElt, lastValueOfSeveralCounts)
{
    const auto transform = Ctf::read(minimums("1\n2", "3</minOutValue><minOutValue>4"));
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getMinIn(), 2.0);
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getMinOut(), 4.0);
}

TEST(RangeValueElt, nanUnsetsTheLimit)
{
    const auto transform = Ctf::read(minimums("nan", "nan"));
    EXPECT_TRUE(std::isnan(Ctf::getOp<RangeOp>(transform).getMinIn()));
}

TEST(RangeValueElt, emptyElementSetsNothing)
{
    const auto transform = Ctf::read(minimums(" ", ""));
    EXPECT_TRUE(std::isnan(Ctf::getOp<RangeOp>(transform).getMinIn()));
}

TEST(RangeValueElt, refusesTextThatIsNoNumber)
{
    Ctf::expectReadFails(minimums("one", "1"), 0x302000e, "Illegal values 'one' in 'Range' line 3: test.ctf");
    Ctf::expectReadFails(minimums("1", "1 two"), 0x302000e, "Illegal values '1 two' in 'Range' line 4: test.ctf");
}

TEST(RangeValueElt, refusesAnotherCountThanOne)
{
    Ctf::expectReadFails(minimums("1 2", "1"), 0x3020016,
                         "Range element: non-single value at 'Range' line 3: test.ctf");
    Ctf::expectReadFails(minimums("1", ","), 0x3020016, "Range element: non-single value at 'Range' line 4: test.ctf");
}
