#include "xml/attributeText.h"

#include "xml/expatParser.h"
#include "xml/xmlFormatter.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <string>

using Color::isAttributeText;

namespace {

class FirstAttribute : public Color::Xml::Reader::DocumentHandler
{
public:
    void startElement(const char*, Color::Xml::Reader::Attributes attributes) override { value = attributes[1]; }
    void endElement(const char*) override {}
    void characterData(const char*, int) override {}

    std::optional<std::string> value;
};

/// Whether a parser gives back the text that was written as an attribute.
bool survives(const std::string& text)
{
    std::ostringstream stream;
    Color::XmlFormatter(stream).writeEmptyTag("a", {{"b", text}});
    FirstAttribute handler;
    Color::Xml::Reader::ExpatParser(handler).feed(stream.str());
    return handler.value == text;
}

std::string utf8(uint32_t code)
{
    const auto tail = [&](unsigned shift) { return static_cast<char>(0x80U | (code >> shift & 0x3fU)); };
    if (code < 0x80) return {static_cast<char>(code)};
    if (code < 0x800) return {static_cast<char>(0xc0U | code >> 6), tail(0)};
    if (code < 0x10000) return {static_cast<char>(0xe0U | code >> 12), tail(6), tail(0)};
    return {static_cast<char>(0xf0U | code >> 18), tail(12), tail(6), tail(0)};
}

} // namespace

TEST(AttributeText, isWhatAParserGivesBackForEachKindOfCodePoint)
{
    const struct
    {
        uint32_t first;
        uint32_t last;
    } ranges[] = {{1, 0x2fff}, {0xd7f0, 0xe00f}, {0xffe0, 0x1000f}, {0x10fff0, 0x11000f}};
    for (const auto& range : ranges) {
        for (uint32_t code = range.first; code <= range.last; ++code) {
            const std::string text = utf8(code);
            ASSERT_EQ(isAttributeText(text), survives(text)) << std::hex << code;
        }
    }
    EXPECT_FALSE(isAttributeText(std::string(1, '\0')));
}

TEST(AttributeText, isWhatAParserGivesBackForAnyThreeBytes)
{
    const unsigned char bytes[] = {'a',  0x7f, 0x80, 0x8f, 0x90, 0x9f, 0xa0, 0xbf, 0xc0, 0xc1, 0xc2, 0xdf, 0xe0,
                                   0xe1, 0xec, 0xed, 0xee, 0xef, 0xf0, 0xf1, 0xf3, 0xf4, 0xf5, 0xf7, 0xf8, 0xff};
    for (const unsigned char a : bytes) {
        for (const unsigned char b : bytes) {
            for (const unsigned char c : bytes) {
                for (const std::size_t size : {1u, 2u, 3u}) {
                    const std::string text =
                        std::string{static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)}.substr(0, size);
                    EXPECT_EQ(isAttributeText(text), survives(text)) << testing::PrintToString(text);
                }
            }
        }
    }
}

TEST(AttributeText, needsTheShortestSpelling)
{
    for (const char* text : {"\xf0\x80\x80\x80", "\xf0\x8f\xbf\xbf", "\xe0\x9f\xbf", "\xc1\xbf"}) {
        EXPECT_FALSE(isAttributeText(text));
        EXPECT_FALSE(survives(text));
    }
}

TEST(AttributeText, mayBeEmpty) { EXPECT_TRUE(isAttributeText("")); }
