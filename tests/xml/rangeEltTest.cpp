#include "tests/xml/ctf.h"

#include <cmath>

using namespace Color;

namespace {

const RangeOp& getRange(const ColorTransformPtr& transform) { return Ctf::getOp<RangeOp>(transform); }

} // namespace

TEST(RangeElt, readsItsLimits)
{
    const auto transform = Ctf::read(Ctf::document("<Range inBitDepth='8i' outBitDepth='10i'>\n"
                                                   "<minInValue>16</minInValue><maxInValue>\n 235 </maxInValue>\n"
                                                   "<MINOUTVALUE>4.5</MINOUTVALUE><maxOutValue>940,</maxOutValue>\n"
                                                   "</Range>"));
    const RangeOp& op = getRange(transform);
    EXPECT_EQ(op.getMinIn(), 16.0);
    EXPECT_EQ(op.getMaxIn(), 235.0);
    EXPECT_EQ(op.getMinOut(), 4.5);
    EXPECT_EQ(op.getMaxOut(), 940.0);
    EXPECT_DOUBLE_EQ(op.getScale(), 935.5 / 219.0);
    EXPECT_DOUBLE_EQ(op.getOffset(), 4.5 - 16.0 * 935.5 / 219.0);
    EXPECT_EQ(op.getLowerBound(), 4.5);
    EXPECT_EQ(op.getUpperBound(), 940.0);
}

TEST(RangeElt, limitsAreNotSetByDefault)
{
    const auto transform = Ctf::read(Ctf::document("<Range inBitDepth='8i' outBitDepth='10i'/>"));
    const RangeOp& op = getRange(transform);
    EXPECT_TRUE(std::isnan(op.getMinIn()));
    EXPECT_TRUE(std::isnan(op.getMaxIn()));
    EXPECT_TRUE(std::isnan(op.getMinOut()));
    EXPECT_TRUE(std::isnan(op.getMaxOut()));
    EXPECT_DOUBLE_EQ(op.getScale(), 1023.0 / 255.0);
}

TEST(RangeElt, refusesLimitsThatDoNotFit)
{
    const auto limits = [](const char* minIn, const char* maxIn, const char* minOut, const char* maxOut) {
        return Ctf::document(Ctf::range(std::string("<minInValue>") + minIn + "</minInValue><maxInValue>" + maxIn +
                                        "</maxInValue><minOutValue>" + minOut + "</minOutValue><maxOutValue>" + maxOut +
                                        "</maxOutValue>"));
    };
    Ctf::expectReadFails(limits("1", "1", "0", "1"), 0x2070002, "Range maxInValue too close to minInValue",
                         "COLOR:TRANSFORM:RANGE");
    Ctf::expectReadFails(limits("1", "0", "0", "1"), 0x2070003, "Range maxValue less than minValue",
                         "COLOR:TRANSFORM:RANGE");
    Ctf::expectReadFails(limits("0", "1", "1", "0"), 0x2070003, "Range maxValue less than minValue",
                         "COLOR:TRANSFORM:RANGE");
    Ctf::expectReadFails(Ctf::document(Ctf::range("<maxInValue>1</maxInValue>")), 0x2070001,
                         "In & Out Max limits must be both set or both missing", "COLOR:TRANSFORM:RANGE");
}
