#include "xml/dummyElt.h"

#include "tests/utils/logRecorder.h"
#include "xml/transformElt.h"

#include <gmock/gmock.h>

using namespace Color;
using namespace Color::Xml::Reader;
using testing::ElementsAre;
using testing::Pair;

namespace {

const char* const kAttributes[] = {"id", "theId", nullptr};

} // namespace

TEST(DummyElt, logsWhatIsIgnoredAndWhy)
{
    ReadContext context;
    context.fileName = "dir/a.ctf";
    context.line = 3;
    const TransformElt parent("processlist", context);
    context.line = 7;
    const LogRecorder recorder;
    const DummyElt dummy("Foo", &parent, context, ": Unknown element");
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_DEBUG, "Ignore element 'Foo' (line 7) where its parent is 'processlist' "
                                                  "(line 3) dir/a.ctf: : Unknown element")));
}

TEST(DummyElt, logsAnUnknownParent)
{
    const ReadContext context;
    const LogRecorder recorder;
    const DummyElt dummy("Foo", nullptr, context, "");
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_DEBUG, "Ignore element 'Foo' (line 0) where its parent is 'Unknown' "
                                                  "(line 0) File name not specified: ")));
}

TEST(DummyElt, keepsItsTextForItself)
{
    const ReadContext context;
    DummyElt dummy("Foo", nullptr, context, "");
    dummy.setRawData("one", 1);
    dummy.setRawData("two", 2);
    EXPECT_THAT(dummy.getRawData(), ElementsAre("one", "two"));
    EXPECT_EQ(dummy.getIdentifier(), "");
    EXPECT_TRUE(dummy.isDummy());
    EXPECT_FALSE(dummy.isContainer());
}

TEST(DummyParent, standsForTheRealParent)
{
    ReadContext context;
    context.line = 5;
    TransformElt parent("ProcessList", context);
    parent.start(kAttributes);
    context.line = 6;
    const DummyElt dummy("Foo", &parent, context, "");
    EXPECT_TRUE(dummy.getParent().isDummy());
    EXPECT_TRUE(dummy.getParent().isContainer());
    EXPECT_EQ(dummy.getParent().getName(), "ProcessList");
    EXPECT_EQ(dummy.getParent().getLine(), 5);
    EXPECT_EQ(dummy.getParent().getFileName(), "File name not specified");
    EXPECT_EQ(dummy.getParent().getIdentifier(), "theId");
    EXPECT_EQ(dummy.getTypeName(), "ProcessList");
    EXPECT_EQ(dummy.getParent().getVersion(), 1.6f);
}

TEST(DummyParent, ignoresDescriptions)
{
    ReadContext context;
    TransformElt parent("ProcessList", context);
    const DummyElt dummy("Foo", &parent, context, "");
    dummy.getParent().appendDescription("text");
    EXPECT_TRUE(parent.getTransform()->getDescriptions().empty());
}

TEST(DummyParent, isUnknownWithoutARealParent)
{
    const ReadContext context;
    const DummyElt dummy("Foo", nullptr, context, "");
    EXPECT_EQ(dummy.getParent().getName(), "Unknown");
    EXPECT_EQ(dummy.getParent().getIdentifier(), "Unknown");
    EXPECT_EQ(dummy.getTypeName(), "Unknown");
}
