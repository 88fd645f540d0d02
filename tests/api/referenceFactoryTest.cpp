#include "tests/api/preferencesDirectory.h"

using namespace Morvane;

namespace {

const BitDepth kNoDepths[] = {BIT_DEPTH_UNKNOWN, BitDepth(1), BitDepth(0x3000)};

/// Keeps what is written.
class TextWriter : public TransformWriterCallback
{
public:
    void write(const char* block, unsigned length) override { text.append(block, length); }
    std::string text;
};

/// The first line of the document of a transform that is about a reference, from the alias or path on.
std::string writtenReference(const TransformPtr& transform)
{
    TextWriter writer;
    EXPECT_TRUE(succeeds(saveColorTransformToBuffer(writer, transform)));
    const std::size_t begin = writer.text.find("outBitDepth=");
    const std::size_t end = writer.text.find('\n', begin);
    EXPECT_NE(end, std::string::npos);
    return writer.text.substr(begin, end - begin);
}

class CreateReferenceTransformDeathTest : public PreferencesDirectory
{};

} // namespace

TEST_F(CreateReferenceTransformDeathTest, refersToAnAlias)
{
    inOwnProcess([] {
        TransformPtr transform;
        // There is no such alias, and nobody has asked yet.
        ASSERT_TRUE(
            succeeds(CreateReferenceTransformFromAlias(BIT_DEPTH_8i, BIT_DEPTH_10i, "no such alias", transform)));
        EXPECT_TRUE(isUuid(transform->getId()));
        EXPECT_STREQ(transform->getName(), "none");
        EXPECT_STREQ(transform->getDescription(), "");
        EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_8i);
        EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_10i);
        EXPECT_TRUE(transform->hasReferences());
        EXPECT_TRUE(transform->hasUnresolvedReferences());
        EXPECT_EQ(writtenReference(transform), "outBitDepth=\"10i\" alias=\"no such alias\">");
    });
}

TEST(createReferenceTransform, refersToAPath)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(
        CreateReferenceTransformFromPath(BIT_DEPTH_16f, BIT_DEPTH_32f, "/no/a.ctf", BASE_PATH_NONE, transform)));
    EXPECT_TRUE(isUuid(transform->getId()));
    EXPECT_STREQ(transform->getName(), "none");
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_32f);
    EXPECT_TRUE(transform->hasUnresolvedReferences());
    EXPECT_EQ(writtenReference(transform), "outBitDepth=\"32f\" path=\"/no/a.ctf\">");

    ASSERT_TRUE(
        succeeds(CreateReferenceTransformFromPath(BIT_DEPTH_16f, BIT_DEPTH_16f, "a.ctf", BASE_PATH_SHARED, transform)));
    EXPECT_EQ(writtenReference(transform), "outBitDepth=\"16f\" path=\"a.ctf\" basePath=\"Shared\">");
}

TEST(createReferenceTransform, refusesMissingTextsAndLeavesTheResult)
{
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(CreateReferenceTransformFromAlias(BIT_DEPTH_8i, BIT_DEPTH_8i, nullptr, result), 0x6030001,
                          "NULL parameter: alias"));
    EXPECT_TRUE(failsWith(CreateReferenceTransformFromAlias(BIT_DEPTH_8i, BIT_DEPTH_8i, "", result), 0x2080001,
                          "Reference '<id>' requires Alias or Path attributes"));
    EXPECT_TRUE(
        failsWith(CreateReferenceTransformFromPath(BIT_DEPTH_8i, BIT_DEPTH_8i, nullptr, BASE_PATH_SHARED, result),
                  0x6030001, "NULL parameter: path"));
    EXPECT_TRUE(failsWith(CreateReferenceTransformFromPath(BIT_DEPTH_8i, BIT_DEPTH_8i, "", BASE_PATH_SHARED, result),
                          0x2080001, "Reference '<id>' requires Alias or Path attributes"));
    EXPECT_EQ(result.get(), before.get());
}

TEST(createReferenceTransform, refusesDepthsThatAreNone)
{
    for (const BitDepth depth : kNoDepths) {
        TransformPtr result;
        EXPECT_TRUE(failsWith(CreateReferenceTransformFromAlias(depth, BIT_DEPTH_8i, "a", result), 0x2010001,
                              "'InBitDepth' attribute missing in <id>"));
        EXPECT_TRUE(failsWith(CreateReferenceTransformFromPath(BIT_DEPTH_8i, depth, "/a.ctf", BASE_PATH_NONE, result),
                              0x2010001, "'OutBitDepth' attribute missing in <id>"));
        EXPECT_FALSE(result);
    }
}

TEST_F(CreateReferenceTransformDeathTest, hasNoInverseWhileItIsUnresolved)
{
    inOwnProcess([] {
        TransformPtr transform;
        ASSERT_TRUE(succeeds(CreateReferenceTransformFromAlias(BIT_DEPTH_8i, BIT_DEPTH_8i, "a", transform)));
        TransformPtr inverse;
        EXPECT_TRUE(failsWith(transform->inverse(inverse), 0x2010016, "Inverse not supported on unresolved transform"));
        EXPECT_FALSE(inverse);
    });
}
