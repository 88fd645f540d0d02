#include "tests/api/hostTools.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>
#include <utility>

using namespace Morvane;

namespace {

/// A directory of its own for each test.
class TransformFile : public ::testing::Test
{
protected:
    TransformFile() : m_directory(std::filesystem::temp_directory_path() / ("morvaneApi" + std::to_string(::getpid())))
    {
        std::filesystem::create_directories(m_directory);
    }

    ~TransformFile() override { std::filesystem::remove_all(m_directory); }

    std::string path(const std::string& name) const { return (m_directory / name).string(); }

    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

private:
    std::filesystem::path m_directory;
};

const std::string kTripling = document("<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">"
                                       "<Array dim=\"3 3 3\">3 0 0 0 3 0 0 0 3</Array></Matrix>",
                                       "name=\"tripling\"");

class ExtensionList : public SupportedExtensionsCallBack
{
public:
    void addExtension(const char* extension, const char* description) override
    {
        m_entries.emplace_back(extension, description);
    }

    const std::vector<std::pair<std::string, std::string>>& entries() const { return m_entries; }

private:
    std::vector<std::pair<std::string, std::string>> m_entries;
};

} // namespace

TEST_F(TransformFile, isLoadedAndApplied)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(loadColorTransform(write("a.ctf", kTripling).c_str(), transform)));
    EXPECT_STREQ(transform->getName(), "tripling");
    EXPECT_EQ(transform.getUseCount(), 1);
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 2, 3, 4}), (std::array<float, 4>{3, 6, 9, 4}));
}

TEST_F(TransformFile, failuresSayWhyAndLeaveTheResult)
{
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(loadColorTransform(nullptr, result), 0x6030001, "NULL parameter: path"));
    EXPECT_TRUE(failsWith(loadColorTransform("", result), 0x3060003, "No file found: ''"));
    EXPECT_TRUE(failsWith(loadColorTransform(path("missing.ctf").c_str(), result), 0x3060003,
                          "No file found: '" + path("missing.ctf") + "'"));
    std::filesystem::create_directory(path("x.ctf"));
    EXPECT_TRUE(
        failsWith(loadColorTransform(path("x.ctf").c_str(), result), 0x3060002, "Not a file: '" + path("x.ctf") + "'"));
    const std::string unknown = write("a.unknown", kTripling);
    EXPECT_TRUE(failsWith(loadColorTransform(unknown.c_str(), result), 0x3060001,
                          "Unsupported file format: '" + unknown + "'"));
    const std::string empty = write("empty.ctf", document(""));
    EXPECT_TRUE(
        failsWith(loadColorTransform(empty.c_str(), result), 0x302001a, "No color operators found in file: " + empty));
    EXPECT_EQ(result.get(), before.get());
}

TEST(transformText, isLoadedAndApplied)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(loadColorTransformFromBuffer(kTripling.c_str(), transform)));
    EXPECT_STREQ(transform->getName(), "tripling");
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 2, 3, 4}), (std::array<float, 4>{3, 6, 9, 4}));
}

TEST(transformText, failuresSayWhyAndLeaveTheResult)
{
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(loadColorTransformFromBuffer(nullptr, result), 0x6030001, "NULL parameter: text"));
    EXPECT_FALSE(loadColorTransformFromBuffer("", result));
    EXPECT_FALSE(loadColorTransformFromBuffer("no document", result));
    // Only documents of the own format are taken from memory.
    EXPECT_TRUE(failsWith(loadColorTransformFromBuffer("<ColorCorrection/>", result), 0x3010001, "Transform invalid"));
    EXPECT_FALSE(loadColorTransformFromBuffer(kTripling.substr(0, kTripling.size() - 1).c_str(), result));
    EXPECT_EQ(result.get(), before.get());
}

TEST(isFileSupported, judgesByTheExtension)
{
    EXPECT_TRUE(isFileSupported("missing/look.ctf"));
    EXPECT_TRUE(isFileSupported("look.xml"));
    EXPECT_FALSE(isFileSupported("look.CTF"));
    EXPECT_FALSE(isFileSupported("look"));
    EXPECT_FALSE(isFileSupported(""));
    EXPECT_FALSE(isFileSupported(nullptr));
}

TEST(getSupportedFileExtensions, tellsEachOnce)
{
    ExtensionList list;
    EXPECT_TRUE(succeeds(getSupportedFileExtensions(list)));
    EXPECT_EQ(list.entries(), (std::vector<std::pair<std::string, std::string>>{
                                  {"ctf", "ctf"},
                                  {"cdl", "ASC CDL color decision list XML format"},
                                  {"ccc", "ASC CDL color correction collection XML format"},
                                  {"cc", "CDL fragment format"},
                                  {"lut", "Halvorn 1d-LUT format"},
                                  {"3dl", "Halvorn 3d-LUT format"},
                                  {"icm", "ICC Profile file extension"},
                                  {"icc", "ICC Profile file extension"},
                                  {"pf", "ICC Profile file extension"},
                              }));
}

TEST(getColorTransformFileExtension, isThatOfTheOwnFormat) { EXPECT_STREQ(getColorTransformFileExtension(), "ctf"); }
