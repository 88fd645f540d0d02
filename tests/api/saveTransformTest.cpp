#include "tests/api/hostTools.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

using namespace Morvane;

namespace {

const std::string kText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<ProcessList version=\"1.3\" id=\"a\" name=\"tripling\">\n"
                          "   <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                          "      <Array dim=\"3 3 3\">\n"
                          "              3               0               0\n"
                          "              0               3               0\n"
                          "              0               0               3\n"
                          "      </Array>\n"
                          "   </Matrix>\n"
                          "</ProcessList>\n";

/// Collects the blocks, and throws when it is handed more than it takes.
class BlockRecorder : public TransformWriterCallback
{
public:
    explicit BlockRecorder(std::size_t capacity = 1000) : m_capacity(capacity) {}

    void write(const char* text, unsigned length) override
    {
        ++m_calls;
        if (m_blocks.size() == m_capacity) throw std::runtime_error("the host has had enough");
        m_blocks.emplace_back(text, length);
    }

    const std::vector<std::string>& blocks() const { return m_blocks; }
    std::size_t calls() const { return m_calls; }

    std::string text() const
    {
        std::string all;
        for (const std::string& block : m_blocks)
            all += block;
        return all;
    }

private:
    std::size_t m_capacity;
    std::size_t m_calls = 0;
    std::vector<std::string> m_blocks;
};

/// A transform that the library has not made.
class ForeignTransform : public Transform
{
public:
    TransformPtr clone() const override { return {}; }
    const char* getId() const override { return ""; }
    MorvaneStatus setId(const char*) override { return {}; }
    const char* getUniqueId() const override { return ""; }
    MorvaneStatus setUniqueId(const char*) override { return {}; }
    const char* getName() const override { return ""; }
    void setName(const char*) override {}
    const char* getDescription() const override { return ""; }
    void setDescription(const char*) override {}
    const char* getInputDescriptor() const override { return ""; }
    void setInputDescriptor(const char*) override {}
    const char* getOutputDescriptor() const override { return ""; }
    void setOutputDescriptor(const char*) override {}
    BitDepth getInputBitDepth() const override { return BIT_DEPTH_32f; }
    BitDepth getOutputBitDepth() const override { return BIT_DEPTH_32f; }
    PixelFormat getInputPixelFormat() const override { return PF_RGBA_32f; }
    MorvaneStatus setInputPixelFormat(PixelFormat) override { return {}; }
    PixelFormat getOutputPixelFormat() const override { return PF_RGBA_32f; }
    MorvaneStatus setOutputPixelFormat(PixelFormat) override { return {}; }
    MorvaneStatus setPixelFormats(PixelFormat, PixelFormat) override { return {}; }
    MorvaneStatus inverse(TransformPtr&) const override { return {}; }
    bool isInverseOf(const TransformPtr&) const override { return false; }
    bool hasReferences() const override { return false; }
    bool hasUnresolvedReferences() const override { return false; }
    MorvaneStatus describe(ContentCallbacks&) const override { return {}; }
    MorvaneStatus setDynamicProperty(const DynamicProperty&) override { return {}; }
    MorvaneStatus getDynamicProperty(DynamicProperty&) const override { return {}; }
    void setGPUAdaptor(const GPUAdaptorPtr&) override {}
    GPUAdaptorPtr getGPUAdaptor() const override { return {}; }
    MorvaneStatus apply(const void*, unsigned, const ROI&, void*, unsigned) override { return {}; }
    MorvaneStatus apply(const void*, const ROI&, void*) override { return {}; }
    MorvaneStatus applyGPU(unsigned, const void*, const void*) override { return {}; }
};

class SavedFile : public ::testing::Test
{
protected:
    SavedFile() : m_directory(std::filesystem::temp_directory_path() / ("morvaneSave" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(m_directory);
    }

    ~SavedFile() override { std::filesystem::remove_all(m_directory); }

    std::string path(const std::string& name) const { return (m_directory / name).string(); }

    std::string content(const std::string& name) const
    {
        std::ifstream file(path(name));
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path m_directory;
};

TransformPtr makeCube(unsigned length)
{
    const std::vector<float> values(std::size_t(3) * length * length * length, 0.25F);
    TransformPtr cube;
    EXPECT_TRUE(succeeds(Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, length, values.data(), cube)));
    return cube;
}

} // namespace

TEST_F(SavedFile, holdsTheDocumentWhateverTheFlag)
{
    for (const bool overwrite : {false, true}) {
        // The second round writes over the file of the first.
        EXPECT_TRUE(succeeds(saveColorTransform(path("a.ctf").c_str(), overwrite, fromText(kText))));
        EXPECT_EQ(content("a.ctf"), kText);
        std::ofstream(path("a.ctf"), std::ios::app) << std::string(10000, 'x');
    }
}

TEST_F(SavedFile, isLoadedAgain)
{
    ASSERT_TRUE(succeeds(saveColorTransform(path("a.ctf").c_str(), true, makeScale({2, 3, 4, 5}, {1, 0, 0, 0.5F}))));
    TransformPtr transform;
    ASSERT_TRUE(succeeds(loadColorTransform(path("a.ctf").c_str(), transform)));
    EXPECT_TRUE(isUuid(transform->getId()));
    EXPECT_STREQ(transform->getName(), "none");
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 1, 1, 1}), (std::array<float, 4>{3, 3, 4, 5.5F}));
}

TEST_F(SavedFile, failuresSayWhy)
{
    const TransformPtr transform = fromText(kText);
    EXPECT_TRUE(failsWith(saveColorTransform(nullptr, true, transform), 0x6030001, "NULL parameter: path"));
    const std::string missing = path("missing/a.ctf");
    EXPECT_TRUE(
        failsWith(saveColorTransform(missing.c_str(), true, transform), 0x3030004, "Invalid path: '" + missing + "'"));
    EXPECT_TRUE(failsWith(saveColorTransform("/dev/full", true, transform), 0x3060004,
                          "Filesystem error for '/dev/full': 'No space left on device"));
}

TEST_F(SavedFile, isLeftAloneWhenThereIsNoTransform)
{
    std::ofstream(path("a.ctf")) << "former content";
    EXPECT_TRUE(
        failsWith(saveColorTransform(path("a.ctf").c_str(), true, TransformPtr()), 0x3030001, "Transform null"));
    EXPECT_TRUE(failsWith(saveColorTransform(path("a.ctf").c_str(), false, TransformPtr(new ForeignTransform)),
                          0x3030001, "Transform null"));
    EXPECT_EQ(content("a.ctf"), "former content");
}

TEST(savedBuffer, isTheDocument)
{
    BlockRecorder recorder;
    EXPECT_TRUE(succeeds(saveColorTransformToBuffer(recorder, fromText(kText))));
    EXPECT_EQ(recorder.text(), kText);
}

TEST(savedBuffer, comesInBlocksInOrder)
{
    BlockRecorder recorder;
    const TransformPtr cube = makeCube(17);
    EXPECT_TRUE(succeeds(saveColorTransformToBuffer(recorder, cube)));
    EXPECT_GT(recorder.blocks().size(), 10U);
    for (const std::string& block : recorder.blocks())
        EXPECT_FALSE(block.empty());

    // Each number is 15 wide and followed by a blank or a new line.
    const std::string number = std::string(11, ' ') + "0.25";
    const std::string line = number + " " + number + " " + number + "\n";
    std::string array = "      <Array dim=\"17 17 17 3\">\n";
    for (int i = 0; i < 17 * 17 * 17; ++i)
        array += line;
    const std::string text = recorder.text();
    EXPECT_NE(text.find(array + "      </Array>\n   </LUT3D>\n</ProcessList>\n"), std::string::npos);

    BlockRecorder second;
    EXPECT_TRUE(succeeds(saveColorTransformToBuffer(second, fromText(text))));
    EXPECT_EQ(second.text(), text);
}

TEST(savedBuffer, failuresSayWhyAndNothingIsWritten)
{
    BlockRecorder recorder;
    EXPECT_TRUE(failsWith(saveColorTransformToBuffer(recorder, TransformPtr()), 0x3030001, "Transform null"));
    EXPECT_TRUE(failsWith(saveColorTransformToBuffer(recorder, TransformPtr(new ForeignTransform)), 0x3030001,
                          "Transform null"));
    EXPECT_EQ(recorder.calls(), 0U);
}

TEST(savedBuffer, aCallbackThatThrowsEndsTheSave)
{
    for (const std::size_t capacity : {0U, 1U, 3U}) {
        BlockRecorder recorder(capacity);
        EXPECT_THROW(saveColorTransformToBuffer(recorder, makeCube(17)), std::runtime_error);
        EXPECT_EQ(recorder.calls(), capacity + 1);
    }
    // With a small document the first block comes at the very end.
    BlockRecorder recorder(0);
    EXPECT_THROW(saveColorTransformToBuffer(recorder, fromText(kText)), std::runtime_error);
    EXPECT_EQ(recorder.calls(), 1U);
}
