#include "tests/xml/ctf.h"

#include <fstream>
#include <iterator>
#include <vector>

using namespace Color;

/// Whatever is done to a good file, reading it either gives a transform or raises a Color::Exception.
namespace {

const char* const kFiles[] = {"everything_1_6.ctf", "curves_1_6.ctf", "grading_1_6.ctf", "luts.ctf",
                              "matrix_1_2.ctf",     "no_version.ctf", "range.ctf"};

std::string load(const char* name)
{
    std::ifstream stream(std::string(MORVANE_TEST_DATA "/ctf/") + name);
    std::string text(std::istreambuf_iterator<char>(stream), {});
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

/// True when the text loads as a file. Reads it as a text in memory too.
bool loads(const std::string& text)
{
    const auto attempt = [](auto&& read) {
        XMLTransformReader reader;
        try {
            read(reader);
        } catch (const Exception& exception) {
            EXPECT_NE(exception.getId(), 0u);
            EXPECT_EQ(reader.getTransform(), nullptr);
            return false;
        }
        EXPECT_NE(reader.getTransform(), nullptr);
        return true;
    };
    attempt([&](XMLTransformReader& reader) { reader.readBuffer(text.c_str()); });
    return attempt([&](XMLTransformReader& reader) {
        std::istringstream stream(text);
        reader.readStream(stream, "damaged.ctf");
    });
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line + "\n");
    return lines;
}

} // namespace

TEST(Damage, everyFileLoadsUndamaged)
{
    for (const char* name : kFiles)
        EXPECT_TRUE(loads(load(name))) << name;
}

TEST(Damage, fileCutAtAnyByteFails)
{
    for (const char* name : kFiles) {
        const std::string text = load(name);
        const std::size_t end = text.rfind('>');
        for (std::size_t size = 0; size <= end; size += MORVANE_SAMPLE_STEP)
            EXPECT_FALSE(loads(text.substr(0, size))) << name << size;
    }
}

TEST(Damage, anyByteMayBeReplaced)
{
    const char nasty[] = {'\0', '<', '>', '"', '&', '\'', '\n', ']', ' ', '9', '-', '\x80', '\xff'};
    for (const char* name : kFiles) {
        const std::string good = load(name);
        std::size_t survivors = 0;
        for (std::size_t i = 0; i < good.size(); i += MORVANE_SAMPLE_STEP) {
            for (const char c : nasty) {
                std::string text = good;
                text[i] = c;
                survivors += loads(text) ? 1U : 0U;
            }
        }
        // Some damage is harmless, such as to a description; most is not.
        EXPECT_GT(survivors, 0u) << name;
        EXPECT_LT(survivors, good.size() * std::size(nasty)) << name;
    }
}

TEST(Damage, anyLineMayBeDoubledRemovedOrSwapped)
{
    for (const char* name : kFiles) {
        const std::vector<std::string> lines = linesOf(load(name));
        const auto join = [](const std::vector<std::string>& parts) {
            std::string text;
            for (const std::string& part : parts)
                text += part;
            return text;
        };
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const auto at = static_cast<std::ptrdiff_t>(i);
            std::vector<std::string> doubled = lines;
            doubled.insert(doubled.begin() + at, lines[i]);
            std::vector<std::string> removed = lines;
            removed.erase(removed.begin() + at);
            std::vector<std::string> swapped = lines;
            std::swap(swapped[i], swapped[(i + 1) % lines.size()]);
            for (const auto& variant : {doubled, removed, swapped})
                loads(join(variant));
        }
    }
}

TEST(Damage, elementsMayBeDoubledOrRemoved)
{
    const std::string good = load("everything_1_6.ctf");
    for (const char* name :
         {"Description", "InputDescriptor", "Info", "Release", "Range", "minInValue", "Matrix", "Array"}) {
        const std::string open = std::string("<") + name;
        const std::string close = std::string("</") + name + ">";
        const std::size_t begin = good.find(open);
        ASSERT_NE(begin, std::string::npos) << name;
        const std::size_t end = good.find(close, begin) + close.size();
        const std::string element = good.substr(begin, end - begin);
        std::string doubled = good;
        doubled.insert(end, element);
        std::string removed = good;
        removed.erase(begin, element.size());
        // Range and Matrix change the depths between neighbours; a limit without its partner is refused.
        const bool survivesDoubling = std::string(name) != "Range" && std::string(name) != "Matrix";
        const bool survivesRemoval = survivesDoubling && std::string(name) != "minInValue";
        EXPECT_EQ(loads(doubled), survivesDoubling) << name;
        EXPECT_EQ(loads(removed), std::string(name) == "Range" || survivesRemoval) << name;
    }
}

TEST(Damage, elementsOfAnOpMayBeRemoved)
{
    const struct
    {
        const char* file;
        const char* begin;
        const char* end;
        bool survives;
    } rows[] = {
        {"curves_1_6.ctf", "<GammaParams gamma", "/>", true},
        {"grading_1_6.ctf", "<ECParams", "/>", true},
        {"grading_1_6.ctf", "<Slope>", "</Slope>", false},
        {"grading_1_6.ctf", "<SOPNode>", "</SOPNode>", true},
        {"grading_1_6.ctf", "<Saturation>", "</Saturation>", true},
        {"grading_1_6.ctf", "<HueVecParams", "/>", false},
        {"curves_1_6.ctf", "<LogParams gamma", "/>", false},
        {"luts.ctf", "<Array dim=\"2 3\"", "</Array>", false},
        {"luts.ctf", "<Array dim=\"2 2", "</Array>", false},
        {"luts.ctf", "<Array dim=\"4", "</Array>", false},
    };
    for (const auto& row : rows) {
        std::string text = load(row.file);
        const std::size_t begin = text.find(row.begin);
        ASSERT_NE(begin, std::string::npos) << row.begin;
        text.erase(begin, text.find(row.end, begin) + std::string(row.end).size() - begin);
        EXPECT_EQ(loads(text), row.survives) << row.begin;
    }
}
