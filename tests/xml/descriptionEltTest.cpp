#include "tests/xml/ctf.h"

using namespace Color;
using testing::ElementsAre;

TEST(DescriptionElt, eachLineIsOneDescriptionOfItsParent)
{
    const auto transform = Ctf::read(Ctf::document("<Description>\n  first line \n\n second\tline</Description>\n" +
                                                   Ctf::range("<Description>of the op</Description>") +
                                                   "<DESCRIPTION>third</DESCRIPTION>"));
    EXPECT_THAT(transform->getDescriptions(), ElementsAre("first line", "second\tline", "third"));
    EXPECT_THAT(transform->getOpList().get(0)->getDescriptions(), ElementsAre("of the op"));
}

TEST(DescriptionElt, textWithEntitiesIsOneDescription)
{
    const auto transform = Ctf::read(
        Ctf::document("<Description>a &amp; b &lt;c&gt; &#233;<![CDATA[ <raw> ]]>.</Description>" + Ctf::range("")));
    EXPECT_THAT(transform->getDescriptions(), ElementsAre("a & b <c> \xc3\xa9 <raw> ."));
}

TEST(DescriptionElt, skippedElementsSplitTheText)
{
    const auto transform =
        Ctf::read(Ctf::document("<Description>before <b>bold</b> after</Description>" + Ctf::range("")));
    EXPECT_THAT(transform->getDescriptions(), ElementsAre("before", "after"));
}

TEST(DescriptionElt, bracketsAtTheEndOfALineBelongToIt)
{
    const auto transform =
        Ctf::read(Ctf::document("<Description>\ncamera [v2]\nlog [[x]]\n]\n]]\nend]</Description>" + Ctf::range("")));
    EXPECT_THAT(transform->getDescriptions(), ElementsAre("camera [v2]", "log [[x]]", "]", "]]", "end]"));
}

TEST(DescriptionElt, inATextInMemoryEachLineIsOneDescriptionToo)
{
    XMLTransformReader reader;
    reader.readBuffer("<ProcessList id='t'><Description>a &amp; b\r\nc [d]\n e</Description></ProcessList>");
    EXPECT_THAT(reader.getTransform()->getDescriptions(), ElementsAre("a & b", "c [d]", "e"));
}
