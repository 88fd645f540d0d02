#include "tests/xml/ctf.h"

using namespace Color;

namespace {

std::string rangeWith(const std::string& attributes) { return Ctf::document("<Range " + attributes + "/>"); }

} // namespace

TEST(OpElt, readsTheCommonAttributes)
{
    const auto transform =
        Ctf::read(rangeWith("id='i' name='n' inBitDepth='8i' outBitDepth='16f' bypass='true' extra='1'"));
    const auto& op = Ctf::getOp<RangeOp>(transform);
    EXPECT_EQ(op.getId(), "i");
    EXPECT_EQ(op.getName(), "n");
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_TRUE(op.getBypass()->get());
    EXPECT_FALSE(op.getBypass()->isDynamic());
}

TEST(OpElt, idAndNameMayBeEmptyOrMissing)
{
    EXPECT_EQ(Ctf::getOp<RangeOp>(Ctf::read(rangeWith("inBitDepth='8i' outBitDepth='8i'"))).getDisplayName(), "Range");
    const auto transform = Ctf::read(rangeWith("id='' name='' inBitDepth='8i' outBitDepth='8i'"));
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getDisplayName(), "Range");
    EXPECT_FALSE(Ctf::getOp<RangeOp>(transform).getBypass()->get());
}

TEST(OpElt, matchesElementAndAttributeNamesWithoutRegardToCase)
{
    const auto transform = Ctf::read(Ctf::document("<RANGE ID='i' INBITDEPTH='8i' OutBitDepth='10i'/>"));
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getId(), "i");
    EXPECT_EQ(Ctf::getOp<RangeOp>(transform).getOutBitDepth(), BIT_DEPTH_10i);
}

TEST(OpElt, keepsFileOrder)
{
    const auto transform = Ctf::read(Ctf::document("<Range id='a' inBitDepth='8i' outBitDepth='10i'/>"
                                                   "<Matrix id='b' inBitDepth='10i' outBitDepth='8i'/>"
                                                   "<Range id='c' inBitDepth='8i' outBitDepth='32f'/>"));
    ASSERT_EQ(transform->getOpList().size(), 3u);
    EXPECT_EQ(transform->getOpList().get(0)->getId(), "a");
    EXPECT_EQ(transform->getOpList().get(1)->getId(), "b");
    EXPECT_EQ(transform->getOpList().get(2)->getId(), "c");
}

TEST(OpElt, requiresBothBitDepths)
{
    Ctf::expectReadFails(rangeWith("outBitDepth='8i'"), 0x3020006,
                         "Required attribute 'Input Bit Depth' missing in 'Range' line 2: test.ctf");
    Ctf::expectReadFails(rangeWith("inBitDepth='8i'"), 0x3020006,
                         "Required attribute 'Output Bit Depth' missing in 'Range' line 2: test.ctf");
}

TEST(OpElt, refusesBitDepthsThatAreNone)
{
    for (const char* depth : {"8I", "8", "", " 8i", "Unknown", "64f"}) {
        Ctf::expectReadFails(rangeWith(std::string("inBitDepth='") + depth + "' outBitDepth='8i'"), 0x3020009,
                             std::string("Illegal 'Input Bit Depth' attribute '") + depth +
                                 "' in 'Range' line 2: test.ctf");
        Ctf::expectReadFails(rangeWith(std::string("inBitDepth='8i' outBitDepth='") + depth + "'"), 0x3020009,
                             std::string("Illegal 'Output Bit Depth' attribute '") + depth +
                                 "' in 'Range' line 2: test.ctf");
    }
}

TEST(OpElt, bypassIsTrueInAnyCaseWithBlanksAround)
{
    for (const char* bypass : {"true", "TRUE", " True ", "&#9;tRUE&#10;"}) {
        const auto transform =
            Ctf::read(rangeWith(std::string("inBitDepth='8i' outBitDepth='8i' bypass='") + bypass + "'"));
        EXPECT_TRUE(Ctf::getOp<RangeOp>(transform).getBypass()->get()) << bypass;
    }
}

TEST(OpElt, refusesAnyOtherBypass)
{
    for (const char* bypass : {"false", "", "1", "yes", "true true"}) {
        Ctf::expectReadFails(rangeWith(std::string("inBitDepth='8i' outBitDepth='8i' bypass='") + bypass + "'"),
                             0x3020024,
                             std::string("Illegal 'Range' bypass attribute '") + bypass + "' line 2: test.ctf");
    }
}

TEST(OpElt, validatesItsOpAtItsEnd)
{
    Ctf::expectReadFails(Ctf::document(Ctf::range("<minInValue>1</minInValue>")), 0x2070001,
                         "In & Out Min limits must be both set or both missing", "COLOR:TRANSFORM:RANGE");
}

TEST(OpElt, textInAnOpIsRefused)
{
    Ctf::expectReadFails(Ctf::document(Ctf::range("  some text ")), 0x3020005,
                         "XML Parsing error: Attribute end 'some text' illegal line 3: test.ctf");
}
