#include "xml/elementReader.h"

#include "tests/xml/ctf.h"
#include "xml/dummyElt.h"

#include <functional>

using namespace Color;
using namespace Color::Xml::Reader;

namespace {

/// A leaf that names another parent than the one it stands in.
class StrayElt : public PlainElt
{
public:
    StrayElt(const std::string& name, ContainerElt& parent, const ReadContext& context)
        : PlainElt(name, parent, context)
    {}
    void setRawData(std::string_view, int32_t) override {}
};

/// Neither container nor leaf.
class OddElt : public Element
{
public:
    OddElt(const std::string& name, const ReadContext& context) : Element(name, context) {}
    void start(Attributes) override {}
    void end() override {}
    bool isContainer() const override { return false; }
    std::string getIdentifier() const override { return {}; }
    std::string getTypeName() const override { return {}; }
};

/// Makes a dummy of each element, but for those that a test makes itself.
class TestReader : public ElementReader
{
public:
    std::function<std::unique_ptr<Element>(const std::string& name)> make;
    using ElementReader::push;

protected:
    void pushElement(const std::string& name) override
    {
        if (auto element = make ? make(name) : nullptr) {
            push(std::move(element));
        } else {
            pushDummy(name, "");
        }
    }
};

Failure failureOfLines(ElementReader& reader, const std::string& text)
{
    std::istringstream stream(text);
    return failureOf([&] { reader.readStream(stream, "test.xml"); });
}

class ElementReaderTest : public testing::Test
{
protected:
    void SetUp() override { reader.reset(); }

    TestReader reader;
};

} // namespace

TEST_F(ElementReaderTest, namelessElementsAreInternalErrors)
{
    const char* const message = "XML Parsing error (Internal error) line 0: File name not specified";
    const char* const none[] = {nullptr};
    Ctf::expectFailure(failureOf([&] { reader.startElement(nullptr, none); }), 0x3020001, message);
    Ctf::expectFailure(failureOf([&] { reader.startElement("", none); }), 0x3020001, message);
    Ctf::expectFailure(failureOf([&] { reader.endElement(nullptr); }), 0x3020001, message);
    Ctf::expectFailure(failureOf([&] { reader.endElement(""); }), 0x3020001, message);
}

TEST_F(ElementReaderTest, endWithoutAnOpenElementIsRefused)
{
    Ctf::expectFailure(failureOf([&] { reader.endElement("a"); }), 0x3020002,
                       "XML Parsing error: Tag '' missing line 0: File name not specified");
}

TEST_F(ElementReaderTest, endOfAnotherElementIsRefused)
{
    const char* const none[] = {nullptr};
    reader.startElement("a", none);
    Ctf::expectFailure(failureOf([&] { reader.endElement("A"); }), 0x3020002,
                       "XML Parsing error: Tag 'A' missing line 0: File name not specified");
}

TEST_F(ElementReaderTest, textThatIsNoneIsRefused)
{
    EXPECT_NO_THROW(reader.characterData(nullptr, 0));
    Ctf::expectFailure(failureOf([&] { reader.characterData("abc", -1); }), 0x3020017, "Attribute illegal: abc");
    Ctf::expectFailure(failureOf([&] { reader.characterData(nullptr, 3); }), 0x3020017, "Attribute illegal: ");
    Ctf::expectFailure(failureOf([&] { reader.characterData("", 3); }), 0x3020017, "Attribute illegal: ");
}

TEST_F(ElementReaderTest, textOutsideOfAllElementsIsRefused)
{
    reader.characterData(" abc ", 5);
    Ctf::expectFailure(failureOf([&] { reader.characterData("\n", 1); }), 0x3020004,
                       "XML Parsing error (no closing tag for 'abc') line 0: File name not specified");
}

TEST_F(ElementReaderTest, leafThatNamesAnotherParentIsRefused)
{
    const DummyElt other("other", nullptr, reader.getContext(), "");
    reader.make = [&](const std::string& name) -> std::unique_ptr<Element> {
        if (name != "stray") return nullptr;
        return std::make_unique<StrayElt>(name, other.getParent(), reader.getContext());
    };
    Ctf::expectFailure(failureOfLines(reader, "<a>\n<stray>\n</stray></a>"), 0x3020001,
                       "XML Parsing error (stray) line 3: test.xml");
}

TEST_F(ElementReaderTest, elementThatIsNeitherContainerNorLeafIsRefused)
{
    reader.make = [&](const std::string& name) { return std::make_unique<OddElt>(name, reader.getContext()); };
    Ctf::expectFailure(failureOfLines(reader, "<a>\n</a>"), 0x3020005,
                       "XML Parsing error: Attribute end 'a' illegal line 2: test.xml");
    Ctf::expectFailure(failureOfLines(reader, "<a>text</a>"), 0x3020005,
                       "XML Parsing error: Attribute end 'text' illegal line 1: test.xml");
}

TEST_F(ElementReaderTest, mismatchWithoutAnOpenElementIsUnbalanced)
{
    reader.make = [&](const std::string& name) -> std::unique_ptr<Element> {
        // Closes the element around it behind the parser's back.
        if (name == "b") reader.endElement("a");
        return nullptr;
    };
    std::istringstream stream("<a><b></b>\n</c>");
    Ctf::expectFailure(failureOf([&] { reader.readStream(stream, "test.xml"); }), 0x3020003,
                       "XML Parsing error (unbalanced element tags) line 2: test.xml");
}

TEST_F(ElementReaderTest, mismatchNamesTheOpenElement)
{
    Ctf::expectFailure(failureOfLines(reader, "<a>\n<b>\n</a>"), 0x3020004,
                       "XML Parsing error (no closing tag for 'b') line 3: test.xml");
}

TEST_F(ElementReaderTest, openElementAtTheEndIsRefused)
{
    Ctf::expectFailure(failureOfLines(reader, "<a>\n<b>\n\n"), 0x3020004,
                       "XML Parsing error (no closing tag for 'b') line 3: test.xml");
    Ctf::expectFailure(failureOf([&] { reader.readBuffer("<a>\n<b>\n\n"); }), 0x3020004,
                       "XML Parsing error (no closing tag for 'b') line 0: File name not specified");
}

TEST_F(ElementReaderTest, brokenXmlIsToldInTheParsersWords)
{
    Ctf::expectFailure(failureOfLines(reader, "<a>\n<</a>"), 0x3020001,
                       "XML Parsing error (not well-formed (invalid token)) line 2: test.xml");
    Ctf::expectFailure(failureOfLines(reader, "<a/>\n<b/>"), 0x3020001,
                       "XML Parsing error (junk after document element) line 2: test.xml");
    Ctf::expectFailure(failureOfLines(reader, "<a x='1' x='2'/>"), 0x3020001,
                       "XML Parsing error (duplicate attribute) line 1: test.xml");
    Ctf::expectFailure(failureOfLines(reader, "<a>&b;</a>"), 0x3020001,
                       "XML Parsing error (undefined entity) line 1: test.xml");
}

TEST_F(ElementReaderTest, linesAreFedWithoutTheirNewline)
{
    std::string seen;
    reader.make = [&](const std::string& name) {
        seen += name + std::to_string(reader.getContext().line) + " ";
        return nullptr;
    };
    std::istringstream stream("<!-- \n\n --><a\n x='1'\n><b/>\n</a>");
    reader.readStream(stream, "test.xml");
    EXPECT_EQ(seen, "a5 b5 ");
    Ctf::expectFailure(failureOfLines(reader, "<a x='1'\ny='2'/>"), 0x3020001,
                       "XML Parsing error (not well-formed (invalid token)) line 2: test.xml");
}

TEST_F(ElementReaderTest, eachReadStartsClean)
{
    failureOfLines(reader, "<a>\n<b>text");
    std::istringstream good("<c/>");
    reader.readStream(good, "good.xml");
    EXPECT_EQ(reader.getContext().line, 1);
    EXPECT_EQ(reader.getContext().fileName, "good.xml");
    EXPECT_TRUE(reader.getContext().stack.isEmpty());
    reader.readBuffer("<c>\n</c>");
    EXPECT_EQ(reader.getContext().line, 0);
    EXPECT_EQ(reader.getContext().fileName, "");
}

TEST_F(ElementReaderTest, fileThatCannotBeOpenedIsRefused)
{
    Ctf::expectFailure(failureOf([&] { reader.readFile("/no/such/file.ctf"); }), 0x3020018,
                       "File open failed: /no/such/file.ctf");
    Ctf::expectFailure(failureOf([&] { reader.readFile("/"); }), 0x3020018, "File open failed: /");
}
