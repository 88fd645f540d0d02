#include "tests/xml/ctf.h"

using namespace Color;

namespace {

/// A node as text: name=value, or name(children).
std::string spell(const Metadata& node)
{
    if (node.isLeaf()) return node.getName() + "=" + node.getValue();
    std::string text = node.getName() + "(";
    for (const Metadata& child : node.getChildren())
        text += spell(child) + ";";
    return text + ")";
}

std::string readInfo(const std::string& body)
{
    return spell(Ctf::read(Ctf::document(body + Ctf::range("")))->getMetadata());
}

} // namespace

TEST(MetadataElt, readsAFreeTree)
{
    EXPECT_EQ(readInfo("<Info attribute='lost'>\n"
                       " <Copyright year='1'>someone &amp; co</Copyright>\n"
                       " <Release><Matrix>3</Matrix><ProcessList/><Array>x</Array></Release>\n"
                       " <IndexMap>kept</IndexMap>\n"
                       "</Info>"),
              "Info(Copyright=someone & co;Release(Matrix=3;ProcessList=;Array=x;);IndexMap=kept;)");
}

TEST(MetadataElt, namesMayRepeatAndKeepTheirOrder)
{
    EXPECT_EQ(readInfo("<Info><a>1</a><b>2</b><a>3</a></Info>"), "Info(a=1;b=2;a=3;)");
}

TEST(MetadataElt, linesAreJoinedWithoutABlank)
{
    EXPECT_EQ(readInfo("<Info><a>one\n  two\n</a></Info>"), "Info(a=onetwo;)");
}

TEST(MetadataElt, infoMayHoldAValue) { EXPECT_EQ(readInfo("<Info>value</Info>"), "Info=value"); }

TEST(MetadataElt, nodeWithChildrenKeepsNoValue) { EXPECT_EQ(readInfo("<Info>text<a>1</a>more</Info>"), "Info(a=1;)"); }

TEST(MetadataElt, laterInfoReplacesAnEarlierOne)
{
    EXPECT_EQ(readInfo("<Info><a>1</a></Info><INFO><b>2</b></INFO>"), "Info(b=2;)");
    EXPECT_EQ(readInfo("<Info><a>1</a></Info><Info>x</Info>"), "Info=x");
    EXPECT_EQ(readInfo("<Info>x</Info><Info/>"), "Info=");
}
