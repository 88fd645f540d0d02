#include "transform/referenceOp.h"

#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"

using namespace Color;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Pair;

namespace {

std::string document(const std::string& attributes) { return Ctf::document(Ctf::op("Reference", "", attributes)); }

void expectRefused(const std::string& attributes, const std::string& word)
{
    Ctf::expectReadFails(document(attributes), 0x3020012,
                         "Attribute '" + word + "' not supported with alias at 'Reference' line 2: test.ctf");
}

} // namespace

TEST(ReferenceElt, readsAnAlias)
{
    const auto transform = Ctf::read(document(" alias='currentMonitor'"));
    const auto& op = Ctf::getOp<ReferenceOp>(transform);
    EXPECT_EQ(op.getAlias(), "currentMonitor");
    EXPECT_EQ(op.getResolvedAlias(), "currentMonitor");
    EXPECT_EQ(op.getPath(), "");
    EXPECT_EQ(op.getBasePath(), BASE_PATH_NONE);
    EXPECT_TRUE(op.isUnresolved());
}

TEST(ReferenceElt, readsAPathWithOrWithoutABase)
{
    const struct
    {
        const char* attribute;
        BasePath basePath;
    } rows[] = {
        {"", BASE_PATH_NONE},
        {" basePath=''", BASE_PATH_NONE},
        {" basePath='Brelwick'", BASE_PATH_BRELWICK},
        {" BASEPATH='sHARED'", BASE_PATH_SHARED},
    };
    for (const auto& row : rows) {
        const LogRecorder recorder;
        const auto transform = Ctf::read(document(std::string(" PATH='looks/&lt; a.ctf '") + row.attribute));
        const auto& op = Ctf::getOp<ReferenceOp>(transform);
        EXPECT_EQ(op.getPath(), "looks/< a.ctf ");
        EXPECT_EQ(op.getBasePath(), row.basePath) << row.attribute;
        EXPECT_EQ(op.getAlias(), "");
        EXPECT_TRUE(op.isUnresolved());
        EXPECT_THAT(recorder.lines(), IsEmpty());
    }
}

TEST(ReferenceElt, readsWhatEveryOpHas)
{
    const auto transform = Ctf::read(Ctf::document("<reference id='i' name='n' inBitDepth='8i' outBitDepth='16f' "
                                                   "alias='a' bypass='true'>\n<Description>d</Description>\n"
                                                   "<DynamicParameter param='LOOK_SWITCH'/>\n</reference>",
                                                   ""));
    const auto& op = Ctf::getOp<ReferenceOp>(transform);
    EXPECT_EQ(op.getId(), "i");
    EXPECT_EQ(op.getName(), "n");
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getDescriptions(), Descriptions{"d"});
    EXPECT_TRUE(op.getBypass()->get());
    EXPECT_TRUE(op.getBypass()->isDynamic());
}

TEST(ReferenceElt, logsAnUnknownBase)
{
    for (const std::string& reference : {std::string(" path='a.ctf'"), std::string(" alias='a'")}) {
        const LogRecorder recorder;
        const auto transform = Ctf::read(document(" basePath='Shard'" + reference));
        EXPECT_EQ(Ctf::getOp<ReferenceOp>(transform).getBasePath(), BASE_PATH_NONE);
        EXPECT_THAT(recorder.lines(),
                    ElementsAre(Pair(LOG_LEVEL_DEBUG, EndsWith("COLOR:XML:READER: Illegal 'basePath' attribute 'Shard' "
                                                               "in 'Reference' line 2: test.ctf"))));
    }
}

TEST(ReferenceElt, refusesAnAliasWithAPathOrABase)
{
    expectRefused(" alias='a' path='b.ctf'", "path");
    expectRefused(" basePath='Shared' path='b.ctf' alias='a'", "path");
    expectRefused(" path='b.ctf' alias='a' basePath='nowhere'", "path");
    expectRefused(" alias='a' basePath='Shared'", "basePath");
    expectRefused(" basePath='brelwick' alias='a'", "basePath");
}

TEST(ReferenceElt, wantsAnAliasOrAPath)
{
    for (const char* attributes : {"", " basePath='Shared'", " alias=''", " path=''", " alias='' path=''"}) {
        Ctf::expectReadFails(document(attributes), 0x3020006,
                             "Required attribute 'path' missing in 'Reference' line 2: test.ctf");
    }
}
