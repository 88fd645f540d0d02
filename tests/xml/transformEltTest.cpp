#include "tests/xml/ctf.h"

using namespace Color;

namespace {

const std::string kOp = Ctf::range("");

std::string processList(const std::string& attributes)
{
    return "<ProcessList " + attributes + ">\n" + kOp + "</ProcessList>";
}

} // namespace

TEST(TransformElt, readsItsAttributes)
{
    const auto transform = Ctf::read(processList("id='{a-1}' name='n' inverseOf='b' version='1.5' other='x'"));
    EXPECT_EQ(transform->getId(), "{a-1}");
    EXPECT_EQ(transform->getUniqueId(), "a1");
    EXPECT_EQ(transform->getName(), "n");
    EXPECT_EQ(transform->getInverseOf(), "b");
}

TEST(TransformElt, takesAnIdWithoutAnyIdentifierCharacter)
{
    const auto transform = Ctf::read(processList("id='-'"));
    EXPECT_EQ(transform->getId(), "-");
    EXPECT_EQ(transform->getUniqueId(), "");
}

TEST(TransformElt, matchesAttributeNamesWithoutRegardToCase)
{
    const auto transform = Ctf::read(processList("ID='a' NAME='n' INVERSEOF='b' VERSION='1.6' XMLNS='urn:x'"));
    EXPECT_EQ(transform->getId(), "a");
    EXPECT_EQ(transform->getName(), "n");
    EXPECT_EQ(transform->getInverseOf(), "b");
}

TEST(TransformElt, lastOfTwoAttributesThatDifferInCaseWins)
{
    EXPECT_EQ(Ctf::read(processList("id='a' ID='b'"))->getId(), "b");
}

TEST(TransformElt, requiresAnId)
{
    Ctf::expectReadFails(processList("name='n'"), 0x3020006,
                         "Required attribute 'Identifier' missing in 'ProcessList' line 1: test.ctf");
}

TEST(TransformElt, refusesEmptyAttributes)
{
    const std::pair<const char*, const char*> rows[] = {
        {"id=''", "Identifier"},
        {"id='a' name=''", "Name"},
        {"id='a' inverseOf=''", "InverseOf"},
        {"id='a' version=''", "Version"},
    };
    for (const auto& [attributes, word] : rows) {
        Ctf::expectReadFails(processList(attributes), 0x3020007,
                             std::string("Required attribute '") + word + "' empty in 'ProcessList' line 1: test.ctf");
    }
}

TEST(TransformElt, refusesAVersionThatIsNoNumber)
{
    for (const char* version : {"abc", "v1.3", "nan", "inf", " ", "-"}) {
        Ctf::expectReadFails(processList(std::string("id='a' version='") + version + "'"), 0x302001b,
                             std::string("Invalid transform version '") + version +
                                 "' supplied at 'ProcessList' line 1: test.ctf");
    }
}

TEST(TransformElt, refusesAVersionAboveTheHighestBeforeAnyOpIsRead)
{
    for (const char* version : {"1.7", "1.6000001", "2", "1e99"}) {
        Ctf::expectReadFails(Ctf::document("<Matrix/>", version), 0x302001c,
                             std::string("Unsupported transform file version '") + version +
                                 "' at 'ProcessList' line 1: test.ctf");
    }
}

TEST(TransformElt, takesAnyLowVersionAndIgnoresTextAfterTheNumber)
{
    for (const char* version : {"0", "-5", "-1e99", "1.2", " 1.3abc", "1.6", "1.6 or so"}) {
        EXPECT_EQ(Ctf::read(Ctf::document(kOp, version))->getOpList().size(), 1u) << version;
    }
}

TEST(TransformElt, validatesTheOpListAtItsEnd)
{
    const std::string text = "<ProcessList id='t'>"
                             "<Range name='first' inBitDepth='8i' outBitDepth='10i'/>"
                             "<Range id='second' inBitDepth='12i' outBitDepth='8i'/>"
                             "</ProcessList>";
    Ctf::expectReadFails(text, 0x206000a, "Bit depth mismatch between op 'first' and op 'second'",
                         "COLOR:TRANSFORM:OPLIST");
}
