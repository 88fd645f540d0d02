#include "xml/xmlTransformReader.h"

#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"
#include "xml/elementStack.h"

#include <boost/weak_ptr.hpp>

using namespace Color;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using testing::StartsWith;

namespace {

const std::string kGood = Ctf::document(Ctf::range(""));

void expectBufferFails(const std::string& text, ErrorId id, const std::string& message,
                       const std::string& category = "COLOR:XML:READER")
{
    XMLTransformReader reader;
    Ctf::expectFailure(failureOf([&] { reader.readBuffer(text.c_str()); }), id, message, category);
    EXPECT_EQ(reader.getTransform(), nullptr);
}

/// How a document that is one line long fares; it may hold null characters.
ColorTransformPtr readOneLine(const std::string& text)
{
    std::istringstream stream(text);
    XMLTransformReader reader;
    reader.readStream(stream, "test.ctf");
    return reader.getTransform();
}

std::string withoutNewlines(std::string text)
{
    for (char& c : text) {
        if (c == '\n') c = ' ';
    }
    return text;
}

std::string asUtf16(const std::string& ascii)
{
    std::string text = "\xff\xfe";
    for (const char c : ascii)
        text += {c, '\0'};
    return text;
}

} // namespace

TEST(XMLTransformReader, hasANameAndAnExtension)
{
    EXPECT_STREQ(XMLTransformReader().getName(), "Morvane Transform Reader");
    EXPECT_STREQ(XMLTransformReader::getExtension(), "ctf");
}

TEST(XMLTransformReader, claimsItsExtensionsExactly)
{
    const XMLTransformReader reader;
    for (const char* path : {"a.ctf", "/b/c.d/a.ctf", "a.xml", "a.b.ctf", "no such dir/a.xml"}) {
        EXPECT_TRUE(reader.isFileSupported(path)) << path;
    }
    for (const char* path : {"a.CTF", "a.Xml", "a", "ctf", "a.ctf.bak", "a.ctfx", "a.", "", "x.ctf/a"}) {
        EXPECT_FALSE(reader.isFileSupported(path)) << path;
    }
}

TEST(XMLTransformReader, readsAFileWithEveryKindOfElement)
{
    XMLTransformReader reader;
    reader.readFile(MORVANE_TEST_DATA "/ctf/everything_1_6.ctf");
    const ColorTransformPtr transform = reader.getTransform();
    ASSERT_NE(transform, nullptr);
    EXPECT_EQ(transform->getId(), "4f5bb9c2-everything");
    EXPECT_EQ(transform->getUniqueId(), "4f5bb9c2everything");
    EXPECT_EQ(transform->getName(), "Everything");
    EXPECT_EQ(transform->getInverseOf(), "another");
    EXPECT_THAT(transform->getDescriptions(),
                ElementsAre("A transform with all kinds of elements", "first line [of two]",
                            "second line, \"quoted\" & escaped <"));
    EXPECT_EQ(transform->getInputDescriptor(), "camera log");
    EXPECT_EQ(transform->getOutputDescriptor(), "scene linear");
    EXPECT_EQ(transform->getMetadata().getChild("Release").getChildValue("Minor"), "6");
    ASSERT_EQ(transform->getOpList().size(), 4u);

    EXPECT_EQ(Ctf::getOp<RangeOp>(transform, 0).getMaxIn(), 235.0);
    EXPECT_EQ(transform->getOpList().get(0)->getOutBitDepth(), BIT_DEPTH_10i);

    const auto& swap = Ctf::getOp<MatrixOp>(transform, 1);
    const MatrixOp::MatrixArray::Values expected = {0,      0, 0.001f, 0, 0, 0.001f, 0, 0,
                                                    0.001f, 0, 0,      0, 0, 0,      0, 1.f / 1023.f};
    EXPECT_EQ(swap.getArray().getValues(), expected);
    EXPECT_EQ(swap.getOffsets(), (MatrixOp::Offsets{0.5f, 0.25f, -0.01f, 0.f}));
    EXPECT_TRUE(swap.getBypass()->get());
    EXPECT_TRUE(swap.getBypass()->isDynamic());
    EXPECT_THAT(swap.getDescriptions(), ElementsAre("swaps red and blue"));

    EXPECT_EQ(Ctf::getOp<MatrixOp>(transform, 2).getOffsets(), (MatrixOp::Offsets{0.1f, 0.2f, 0.3f, 0.4f}));
}

TEST(XMLTransformReader, readsAFileInOtherCaseWithoutVersion)
{
    XMLTransformReader reader;
    reader.readFile(MORVANE_TEST_DATA "/ctf/no_version.ctf");
    EXPECT_EQ(reader.getTransform()->getId(), "bare");
    EXPECT_EQ(Ctf::getOp<MatrixOp>(reader.getTransform()).getArray().getValues()[10], 4.f);
}

TEST(XMLTransformReader, refusesAFileWithoutOpsButNotATextInMemory)
{
    const std::string path = MORVANE_TEST_DATA "/ctf/no_ops.ctf";
    XMLTransformReader reader;
    Ctf::expectFailure(failureOf([&] { reader.readFile(path); }), 0x302001a,
                       "No color operators found in file: " + path);
    EXPECT_EQ(reader.getTransform(), nullptr);
    reader.readBuffer("<ProcessList id='t'/>");
    EXPECT_TRUE(reader.getTransform()->getOpList().empty());
}

TEST(XMLTransformReader, refusesADocumentWithoutProcessList)
{
    for (const char* text : {"", "\n\n", "<Foo/>", "<Foo>text</Foo>", "<Matrix inBitDepth='8i'/>", "<IndexMap/>",
                             "<!-- nothing -->", "<Info><a/></Info>"}) {
        Ctf::expectReadFails(text, 0x3010002, "Transform invalid: 'test.ctf'", "COLOR:XML:ALL");
        expectBufferFails(text, 0x3010001, "Transform invalid", "COLOR:XML:ALL");
    }
    XMLTransformReader reader;
    EXPECT_EQ(failureOf([&] { reader.readBuffer(nullptr); }).message, "Transform invalid");
}

TEST(XMLTransformReader, opNeedsAProcessListAroundIt)
{
    Ctf::expectReadFails("<Foo>\n<Matrix inBitDepth='8i' outBitDepth='8i'/></Foo>", 0x3020002,
                         "XML Parsing error: Tag 'ProcessList' missing line 2: test.ctf");
}

TEST(XMLTransformReader, processListInsideAnotherElementIsTakenWithoutItsOps)
{
    const LogRecorder recorder;
    Ctf::expectReadFails("<Foo>\n<ProcessList id='t'>\n<Range/>\n</ProcessList></Foo>", 0x302001a,
                         "No color operators found in file: test.ctf");
    ASSERT_EQ(recorder.lines().size(), 3u); // the third is the failure
    EXPECT_EQ(recorder.lines()[1].second, "Ignore element 'Range' (line 3) where its parent is 'ProcessList' (line 2) "
                                          "test.ctf: : The Range's parent can only be a Transform");
}

TEST(XMLTransformReader, secondProcessListIsIgnoredWithItsContent)
{
    const LogRecorder recorder;
    const auto transform =
        Ctf::read(Ctf::document("<ProcessList version='9'>\n<Matrix/>text</ProcessList>" + Ctf::range("")));
    EXPECT_EQ(transform->getOpList().size(), 1u);
    EXPECT_THAT(
        recorder.lines(),
        ElementsAre(Pair(LOG_LEVEL_DEBUG,
                         "Ignore element 'ProcessList' (line 2) where its parent is 'ProcessList' (line 1) "
                         "test.ctf: : The Color::Transform already exists"),
                    Pair(LOG_LEVEL_DEBUG, "Ignore element 'Matrix' (line 3) where its parent is 'ProcessList' (line 2) "
                                          "test.ctf: : The Matrix's parent can only be a Transform")));
}

TEST(XMLTransformReader, opInsideAnOpIsIgnoredWithItsContent)
{
    const LogRecorder recorder;
    const auto transform =
        Ctf::read(Ctf::document(Ctf::range("<Matrix>\n<Array dim='3 3 3'>1 2</Array></Matrix><lut1d/>")));
    EXPECT_EQ(transform->getOpList().size(), 1u);
    EXPECT_THAT(
        recorder.lines(),
        ElementsAre(Pair(LOG_LEVEL_DEBUG, "Ignore element 'Matrix' (line 3) where its parent is 'Range' (line 2) "
                                          "test.ctf: : The Matrix's parent can only be a Transform"),
                    Pair(LOG_LEVEL_DEBUG, "Ignore element 'Array' (line 4) where its parent is 'Matrix' (line 3) "
                                          "test.ctf: "),
                    Pair(LOG_LEVEL_DEBUG, "Ignore element 'lut1d' (line 4) where its parent is 'Range' (line 2) "
                                          "test.ctf: : The lut1d's parent can only be a Transform")));
}

TEST(XMLTransformReader, opAsRootIsIgnored)
{
    const LogRecorder recorder;
    EXPECT_EQ(failureOf([] { Ctf::read("<Matrix/>"); }).id, 0x3010002u);
    ASSERT_EQ(recorder.lines().size(), 2u);
    EXPECT_EQ(recorder.lines()[0].second, "Ignore element 'Matrix' (line 1) where its parent is 'Unknown' (line 0) "
                                          "test.ctf: : The Matrix's parent can only be a Transform");
}

TEST(XMLTransformReader, textInsideContainersIsRefused)
{
    Ctf::expectReadFails(Ctf::document("hello"), 0x3020005,
                         "XML Parsing error: Attribute end 'hello' illegal line 2: test.ctf");
    Ctf::expectReadFails(Ctf::document(Ctf::range(" 1 2 ")), 0x3020005,
                         "XML Parsing error: Attribute end '1 2' illegal line 3: test.ctf");
    expectBufferFails("<ProcessList id='t'>\nhello</ProcessList>", 0x3020005,
                      "XML Parsing error: Attribute end 'hello' illegal line 0: File name not specified");
}

TEST(XMLTransformReader, closingTagMustMatchExactly)
{
    Ctf::expectReadFails("<ProcessList id='t'>\n</processlist>", 0x3020004,
                         "XML Parsing error (no closing tag for 'ProcessList') line 2: test.ctf");
}

TEST(XMLTransformReader, failuresInAMemoryTextSayLine0AndNoFile)
{
    expectBufferFails("<ProcessList\n>\n</ProcessList>", 0x3020006,
                      "Required attribute 'Identifier' missing in 'ProcessList' line 0: File name not specified");
    expectBufferFails("<ProcessList id='t'>\n<", 0x3020004,
                      "XML Parsing error (no closing tag for 'ProcessList') line 0: File name not specified");
    expectBufferFails("<ProcessList id='t'>\n<IndexMap/>", 0x3020011,
                      "Attribute 'IndexMap' not supported in 'File name not specified' line 0");
}

TEST(XMLTransformReader, canBeUsedAgain)
{
    XMLTransformReader reader;
    EXPECT_EQ(reader.getTransform(), nullptr);
    std::istringstream good(kGood);
    reader.readStream(good, "good.ctf");
    const ColorTransformPtr first = reader.getTransform();
    ASSERT_NE(first, nullptr);

    std::istringstream bad("<ProcessList id='u' version='1.6'>\n<Range inBitDepth='8i' outBitDepth='8i'/>");
    EXPECT_EQ(failureOf([&] { reader.readStream(bad, "bad.ctf"); }).message,
              "XML Parsing error (no closing tag for 'ProcessList') line 2: bad.ctf");
    EXPECT_EQ(reader.getTransform(), nullptr);

    reader.readBuffer(kGood.c_str());
    ASSERT_NE(reader.getTransform(), nullptr);
    EXPECT_NE(reader.getTransform(), first);
    EXPECT_EQ(first->getOpList().size(), 1u);

    EXPECT_EQ(failureOf([&] { reader.readFile("/no/such.ctf"); }).message, "File open failed: /no/such.ctf");
    EXPECT_EQ(reader.getTransform(), nullptr);
}

TEST(XMLTransformReader, failureLetsGoOfEverything)
{
    XMLTransformReader reader;
    std::istringstream good(kGood);
    reader.readStream(good, "good.ctf");
    const boost::weak_ptr<Transform> watched = reader.getTransform();
    ASSERT_FALSE(watched.expired());
    EXPECT_EQ(failureOf([&] { reader.readBuffer("<a>"); }).id, 0x3020004u);
    EXPECT_TRUE(watched.expired());
}

TEST(XMLTransformReader, takesWindowsLineEnds)
{
    std::string text;
    for (const char c : Ctf::document("<Description>one\ntwo]</Description>" +
                                      Ctf::matrix("<Array dim='3 3 3'>1 2 3\n4 5 6\n7 8 9</Array>"))) {
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    XMLTransformReader reader;
    std::istringstream stream(text);
    reader.readStream(stream, "test.ctf");
    for (int i = 0; i < 2; ++i) {
        EXPECT_THAT(reader.getTransform()->getDescriptions(), ElementsAre("one", "two]"));
        EXPECT_EQ(Ctf::getOp<MatrixOp>(reader.getTransform()).getArray().getValues()[10], 9.f);
        reader.readBuffer(text.c_str());
    }
}

TEST(XMLTransformReader, takesAByteOrderMark) { EXPECT_EQ(Ctf::read("\xef\xbb\xbf" + kGood)->getId(), "t"); }

TEST(XMLTransformReader, convertsLatin1)
{
    const auto transform = Ctf::read("<?xml version='1.0' encoding='ISO-8859-1'?>\n"
                                     "<ProcessList id='t' name='caf\xe9'>\n<Description>\xfc"
                                     "ber\n\xdf</Description>\n" +
                                     Ctf::range("") + "</ProcessList>");
    EXPECT_EQ(transform->getName(), "caf\xc3\xa9");
    EXPECT_THAT(transform->getDescriptions(), ElementsAre("\xc3\xbc"
                                                          "ber",
                                                          "\xc3\x9f"));
}

TEST(XMLTransformReader, refusesBytesThatAreNoUtf8)
{
    Ctf::expectReadFails("<ProcessList id='t'\n name='caf\xe9'/>", 0x3020001,
                         "XML Parsing error (not well-formed (invalid token)) line 2: test.ctf");
}

TEST(XMLTransformReader, refusesAnUnknownEncoding)
{
    Ctf::expectReadFails("<?xml version='1.0' encoding='KLINGON'?>\n<ProcessList id='t'/>", 0x3020001,
                         "XML Parsing error (unknown encoding) line 1: test.ctf");
}

TEST(XMLTransformReader, takesUtf16OnOneLineOnly)
{
    EXPECT_EQ(readOneLine(asUtf16(withoutNewlines(kGood)))->getId(), "t");
    // A line ends at its newline byte, which shifts the characters after it by a byte and makes text of the markup.
    EXPECT_EQ(failureOf([] { readOneLine(asUtf16(kGood)); }).id, 0x3020005u);
}

TEST(XMLTransformReader, refusesNullCharacters)
{
    std::string text = kGood;
    text[text.find("inBitDepth")] = '\0';
    Ctf::expectReadFails(text, 0x3020001, "XML Parsing error (not well-formed (invalid token)) line 2: test.ctf");
    expectBufferFails(text, 0x3020004,
                      "XML Parsing error (no closing tag for 'ProcessList') line 0: File name not specified");
}

TEST(XMLTransformReader, takesAnAttributeOfTenMegabytes)
{
    const std::string name(10'000'000, 'n');
    const auto transform = Ctf::read("<ProcessList id='t' name='" + name + "'>" + Ctf::range("") + "</ProcessList>");
    EXPECT_EQ(transform->getName(), name);
}

TEST(XMLTransformReader, cutsTheMessageOfALongValue)
{
    const std::string value(10'000'000, 'v');
    const Failure failure = failureOf(
        [&] { Ctf::read(Ctf::document("<Range inBitDepth='8i' outBitDepth='8i' bypass='" + value + "'/>")); });
    EXPECT_EQ(failure.id, 0x3020024u);
    const std::string begin = "Illegal 'Range' bypass attribute '";
    EXPECT_EQ(failure.message, begin + std::string(1023 - begin.size(), 'v'));
}

TEST(XMLTransformReader, chunkMayBeLongerThanWhatExpatTakesAtOnce)
{
    const std::string text((std::size_t{64} << 20) + 5, 'd');
    const auto transform = Ctf::read(Ctf::document("<Description>" + text + "</Description>" + Ctf::range("")));
    ASSERT_EQ(transform->getDescriptions().size(), 1u);
    EXPECT_EQ(transform->getDescriptions()[0].size(), text.size());
}

TEST(XMLTransformReader, refusesElementsNestedWithoutEnd)
{
    std::string nested = "<ProcessList id='t'><Info>";
    for (int i = 0; i < 5'000'000; ++i)
        nested += "<a>\n";
    Ctf::expectReadFails(nested, 0x3020001, "XML Parsing error (Elements nested too deeply) line 255: test.ctf");
    expectBufferFails(nested, 0x3020001,
                      "XML Parsing error (Elements nested too deeply) line 0: File name not specified");
    nested.replace(nested.find("<Info>"), 6, "<Foo> ");
    Ctf::expectReadFails(nested, 0x3020001, "XML Parsing error (Elements nested too deeply) line 255: test.ctf");
}

TEST(XMLTransformReader, takesElementsNestedAsDeeplyAsAllowed)
{
    const std::size_t depth = Xml::Reader::ElementStack::kMaxDepth - 2; // below ProcessList and Info
    std::string open;
    std::string close;
    for (std::size_t i = 0; i < depth; ++i) {
        open += "<a>";
        close += "</a>";
    }
    const auto transform = Ctf::read(Ctf::document("<Info>" + open + "v" + close + "</Info>" + Ctf::range("")));
    const Metadata* node = &transform->getMetadata();
    for (std::size_t i = 0; i < depth; ++i)
        node = &node->getChild("a");
    EXPECT_EQ(node->getValue(), "v");
}

TEST(XMLTransformReader, logsFailuresAtLevelDebug)
{
    const LogRecorder recorder;
    EXPECT_EQ(failureOf([] { Ctf::read(Ctf::document("hello")); }).id, 0x3020005u);
    ASSERT_EQ(recorder.lines().size(), 1u);
    EXPECT_EQ(recorder.lines()[0].first, LOG_LEVEL_DEBUG);
    EXPECT_THAT(recorder.lines()[0].second, HasSubstr("COLOR:XML:READER: XML Parsing error: Attribute end 'hello'"));
}
