#include "xml/expatParser.h"

#include <gtest/gtest.h>
#include <stdexcept>

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
