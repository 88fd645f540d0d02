#include "xml/expatParser.h"

#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>
#include <vector>

using namespace Color::Xml::Reader;

namespace {

/// Writes down what it is told.
class Recorder : public DocumentHandler
{
public:
    void startElement(const char* name, Attributes attributes) override
    {
        text += std::string("<") + name;
        for (; *attributes; attributes += 2)
            text += std::string(" ") + attributes[0] + "=" + attributes[1];
        text += ">";
        if (std::string(name) == "throw") throw std::runtime_error("stop");
    }
    void endElement(const char* name) override { text += std::string("</") + name + ">"; }
    void characterData(const char* characters, int length) override
    {
        text += std::string(characters, static_cast<std::size_t>(length));
    }

    std::string text;
};

} // namespace

TEST(ExpatParser, tellsTheHandlerInDocumentOrder)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    EXPECT_EQ(parser.feed("<a x='1' y='2'>te"), ExpatParser::Result::Good);
    EXPECT_EQ(parser.feed("xt<b/></a>"), ExpatParser::Result::Good);
    EXPECT_EQ(recorder.text, "<a x=1 y=2>text<b></b></a>");
}

TEST(ExpatParser, tellsAnElementWithThePieceThatCompletesIt)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    EXPECT_EQ(parser.feed("<aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa x='1'"), ExpatParser::Result::Good);
    EXPECT_EQ(recorder.text, "");
    EXPECT_EQ(parser.feed(">"), ExpatParser::Result::Good);
    EXPECT_EQ(recorder.text, "<aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa x=1>");
}

TEST(ExpatParser, saysWhyItStopped)
{
    Recorder recorder;
    ExpatParser mismatch(recorder);
    EXPECT_EQ(mismatch.feed("<a></b>"), ExpatParser::Result::TagMismatch);
    EXPECT_STREQ(mismatch.getErrorText(), "mismatched tag");
    ExpatParser illegal(recorder);
    EXPECT_EQ(illegal.feed("<a><</a>"), ExpatParser::Result::Illegal);
    EXPECT_STREQ(illegal.getErrorText(), "not well-formed (invalid token)");
}

TEST(ExpatParser, passesOnWhatTheHandlerThrows)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    EXPECT_THROW(parser.feed("<a><throw/><c/></a>"), std::runtime_error);
    EXPECT_EQ(recorder.text, "<a><throw>");
}

TEST(ExpatParser, countsWhatIsPending)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    parser.feed("<a>text");
    EXPECT_EQ(parser.getPendingSize(), 0u);
    parser.feed("<b x=");
    EXPECT_EQ(parser.getPendingSize(), 5u);
    parser.feed("'1'>]]");
    EXPECT_EQ(parser.getPendingSize(), 2u);
    EXPECT_EQ(recorder.text, "<a>text<b x=1>");
}

TEST(ExpatParser, plainTextIsTextOnlyWhereTextMayStand)
{
    const char* const start = "<a>";
    const struct
    {
        std::vector<const char*> pieces;
        const char* told;
    } rows[] = {
        {{start, "1 2", "3\t4", "", " 5", "</a>"}, "<a>1 23\t4 5</a>"},
        {{start, "<b x='", "1 2", "3'>", "4", "</b>", "5", "</a>"}, "<a><b x=1 23>4</b>5</a>"},
        {{start, "<!--", "1 2", "-->", "3", "</a>"}, "<a>3</a>"},
        {{start, "<?pi", " 1 2", "?>", "3", "</a>"}, "<a>3</a>"},
        {{start, "<![CDATA[1", "2 3", "]]>", "4", "</a>"}, "<a>12 34</a>"},
        {{start, "1]", "2", "]]", "3", "</a>"}, "<a>1]2]]3</a>"},
        {{start, "1&#5", "0;", "2", "</a>"}, "<a>122</a>"},
        {{start, "1\r", "2", "</a>"}, "<a>1\n2</a>"},
        {{start, "\xc3", "\xa4", "1", "</a>"},
         "<a>\xc3\xa4"
         "1</a>"},
        {{"<", "a", ">", "1", "</", "a", ">"}, "<a>1</a>"},
    };
    for (const auto& row : rows) {
        Recorder recorder;
        ExpatParser parser(recorder);
        for (const char* piece : row.pieces)
            EXPECT_EQ(parser.feed(piece), ExpatParser::Result::Good) << row.told << piece;
        EXPECT_EQ(recorder.text, row.told);
    }
}

TEST(ExpatParser, plainTextOutsideOfElementsIsIllegal)
{
    for (const char* begin : {"", " ", "<?xml version='1.0'?>", "<a/>", "<a></a>"}) {
        Recorder recorder;
        ExpatParser parser(recorder);
        EXPECT_EQ(parser.feed(begin), ExpatParser::Result::Good) << begin;
        EXPECT_EQ(parser.feed("1 2"), ExpatParser::Result::Illegal) << begin;
    }
}

TEST(ExpatParser, controlCharactersInTextAreIllegal)
{
    using namespace std::string_view_literals;
    for (const std::string_view text :
         {"1\0002"sv, "\0"sv, "\x01"sv, "1 \x1f"sv, "1]]>2"sv, "1<2"sv, "1& 2"sv, "\xff"sv}) {
        Recorder recorder;
        ExpatParser parser(recorder);
        ASSERT_EQ(parser.feed("<a>"), ExpatParser::Result::Good);
        EXPECT_EQ(parser.feed("1 2"), ExpatParser::Result::Good);
        EXPECT_EQ(parser.feed(text), ExpatParser::Result::Illegal) << text;
        EXPECT_EQ(recorder.text.substr(0, 6), "<a>1 2");
    }
}

TEST(ExpatParser, bytesOfWideCharactersAreNoPlainText)
{
    using namespace std::string_view_literals;
    Recorder recorder;
    ExpatParser parser(recorder);
    EXPECT_EQ(parser.feed("\0<\0a\0>"sv), ExpatParser::Result::Good);
    EXPECT_EQ(parser.feed("12"), ExpatParser::Result::Good); // U+3132
    EXPECT_EQ(recorder.text, "<a>\xe3\x84\xb2");
}

TEST(ExpatParser, passesOnWhatTheHandlerOfTextThrows)
{
    class Thrower : public Recorder
    {
    public:
        void characterData(const char*, int) override { throw std::runtime_error("text"); }
    };
    for (const char* text : {"1 2", "1 2</a>"}) {
        Thrower thrower;
        ExpatParser parser(thrower);
        EXPECT_EQ(parser.feed("<a>"), ExpatParser::Result::Good);
        EXPECT_THROW(parser.feed(text), std::runtime_error);
        EXPECT_EQ(thrower.text, "<a>");
    }
}

TEST(ExpatParser, piecesOfAnyKindAreToldAsExpatTellsThem)
{
    // A document type makes expat see every piece.
    const char* const kinds[] = {
        "1 2",  "-0.5e3, 7", " ",    "\t",  "]",   "]]", "&amp;", "&#5",      "0;",        "<b>",
        "</b>", "<!--",      "-",    "-->", "'",   "x=", "<b x=", ">",        "<![CDATA[", "]]>",
        "\r",   "\xc3",      "\xa4", "\n",  "<?p", "?>", "/>",    "<b x='1'", "",          "3"};
    std::mt19937 random(7);
    std::size_t refused = 0;
    constexpr std::size_t documents = 20000;
    for (std::size_t i = 0; i < documents; ++i) {
        Recorder ours;
        Recorder expats;
        ExpatParser parser(ours);
        ExpatParser reference(expats);
        reference.feed("<!DOCTYPE a>");
        ExpatParser::Result result = parser.feed("<a>");
        reference.feed("<a>");
        std::string text;
        for (int j = 0; j < 12 && result == ExpatParser::Result::Good; ++j) {
            const char* const piece = kinds[random() % std::size(kinds)];
            text.append(piece).append("|");
            result = parser.feed(piece);
            ASSERT_EQ(result, reference.feed(piece)) << text;
            ASSERT_EQ(ours.text, expats.text) << text;
            ASSERT_EQ(parser.getPendingSize(), reference.getPendingSize()) << text;
        }
        ASSERT_STREQ(parser.getErrorText(), reference.getErrorText()) << text;
        refused += result == ExpatParser::Result::Good ? 0 : 1;
    }
    EXPECT_GT(refused, documents / 10);
    EXPECT_LT(refused, documents - documents / 10);
}

TEST(ExpatParser, longMarkupInManyPiecesIsNotScannedAgainForEach)
{
    // Scanning it anew for each piece would go over 700 GB.
    Recorder recorder;
    ExpatParser parser(recorder);
    const std::string piece(64, 'x');
    ASSERT_EQ(parser.feed("<a><!--"), ExpatParser::Result::Good);
    for (int i = 0; i < 150000; ++i)
        ASSERT_EQ(parser.feed(piece), ExpatParser::Result::Good);
    ASSERT_EQ(parser.feed("--> text </a>"), ExpatParser::Result::Good);
    EXPECT_EQ(recorder.text, "<a> text </a>");
}

TEST(ExpatParser, refusesLongMarkupThatMightEndInEachPiece)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    const std::string piece = std::string(64 << 10, 'x') + ">";
    ASSERT_EQ(parser.feed("<a><b x='"), ExpatParser::Result::Good);
    ExpatParser::Result result = ExpatParser::Result::Good;
    for (int i = 0; i < 1000 && result == ExpatParser::Result::Good; ++i)
        result = parser.feed(piece);
    EXPECT_EQ(result, ExpatParser::Result::Illegal);
    EXPECT_STREQ(parser.getErrorText(), "Markup spread over too many lines");
}

TEST(ExpatParser, takesPiecesLargerThanExpatDoesAtOnce)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    const std::string value((std::size_t{64} << 20) + 3, 'x');
    ASSERT_EQ(parser.feed("<a>" + value + "</a>"), ExpatParser::Result::Good);
    EXPECT_EQ(recorder.text.size(), value.size() + 7);
    EXPECT_EQ(parser.getPendingSize(), 0u);
}

TEST(ExpatParser, neverReadsExternalEntities)
{
    Recorder recorder;
    ExpatParser parser(recorder);
    EXPECT_EQ(parser.feed("<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/hostname'>]><a>[&e;]</a>"), ExpatParser::Result::Good);
    EXPECT_EQ(recorder.text, "<a>[]</a>");
}

TEST(ExpatParser, limitsTheGrowthOfEntities)
{
    std::string text = "<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx'>";
    for (int i = 1; i < 10; ++i) {
        const std::string former = "&e" + std::to_string(i - 1) + ";";
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            text += former;
        text += "'>";
    }
    Recorder recorder;
    ExpatParser parser(recorder);
    EXPECT_EQ(parser.feed(text + "]><a>&e9;</a>"), ExpatParser::Result::Illegal);
    EXPECT_STREQ(parser.getErrorText(), "limit on input amplification factor (from DTD and entities) breached");
}

TEST(ExpatParser, growthOfEntitiesIsMeasuredByAllText)
{
    const std::string value(1000, 'x');
    for (const bool isLong : {false, true}) {
        Recorder recorder;
        ExpatParser parser(recorder);
        ASSERT_EQ(parser.feed("<!DOCTYPE a [<!ENTITY e '" + value + "'>]><a>"), ExpatParser::Result::Good);
        for (int i = 0; i < 2000; ++i)
            ASSERT_EQ(parser.feed(isLong ? std::string(100, '1') : "1"), ExpatParser::Result::Good);
        ExpatParser::Result result = ExpatParser::Result::Good;
        for (int i = 0; i < 10000 && result == ExpatParser::Result::Good; ++i)
            result = parser.feed("&e;");
        EXPECT_EQ(result == ExpatParser::Result::Good, isLong);
    }
}
