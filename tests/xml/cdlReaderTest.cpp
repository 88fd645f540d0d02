#include "xml/cdlReader.h"

#include "tests/utils/commaLocale.h"
#include "tests/xml/cdl.h"
#include "tests/xml/temporaryDirectory.h"

#include <fstream>
#include <iterator>

using namespace Color;

namespace {

const char* const kFiles[] = {"show.cdl", "looks.ccc", "shot.cc"};

std::string pathOf(const char* name) { return std::string(MORVANE_TEST_DATA "/cdl/") + name; }

std::string load(const char* name)
{
    std::ifstream stream(pathOf(name));
    std::string text(std::istreambuf_iterator<char>(stream), {});
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

std::vector<std::string> idsOf(const CDLReader& reader)
{
    std::vector<std::string> ids;
    for (const ColorTransformPtr& transform : reader.getTransformList())
        ids.push_back(Cdl::opOf(transform).getId());
    return ids;
}

/// True when the text reads; else it must have failed as failures do, and left nothing behind.
bool reads(const std::string& text)
{
    const auto attempt = [](auto&& read) {
        CDLReader reader;
        try {
            read(reader);
        } catch (const Exception& exception) {
            EXPECT_NE(exception.getId(), 0u);
            EXPECT_TRUE(reader.getTransformList().empty());
            return false;
        }
        EXPECT_FALSE(reader.getTransformList().empty());
        return true;
    };
    attempt([&](CDLReader& reader) { reader.readBuffer(text.c_str()); });
    return attempt([&](CDLReader& reader) { Cdl::read(reader, text); });
}

} // namespace

TEST(CDLReader, readsAList)
{
    CDLReader reader;
    reader.readFile(pathOf("show.cdl"));
    EXPECT_EQ(idsOf(reader), (std::vector<std::string>{"sc12", "sc13"}));
    EXPECT_EQ(reader.getTransform(), reader.getTransformList()[0]);
    EXPECT_EQ(reader.getTransform()->getOpList().size(), 1u);

    const CDLOp& first = Cdl::opOf(reader.getTransform());
    EXPECT_EQ(first.getSlope(), (CDLOp::Params{1.1, 1, 0.9}));
    EXPECT_EQ(first.getOffset(), (CDLOp::Params{0.01, 0, -0.01}));
    EXPECT_EQ(first.getPower(), (CDLOp::Params{1, 1.05, 1.1}));
    EXPECT_EQ(first.getSaturation(), 0.85);
    EXPECT_EQ(first.getDescriptions(),
              (Descriptions{"CD: Scene 12", "CDL: Grades of the show", "CDL: InputDesc: Log film scan",
                            "CDL: ViewingDesc: P3 projector", "CC: Warmer", "SOP: by eye", "Sat: a little less"}));
    EXPECT_EQ(Cdl::opOf(reader.getTransformList()[1]).getSaturation(), 0.0);
}

TEST(CDLReader, readsACollection)
{
    CDLReader reader;
    reader.readFile(pathOf("looks.ccc"));
    EXPECT_EQ(idsOf(reader), (std::vector<std::string>{"day", "night", "neutral"}));
    EXPECT_EQ(Cdl::opOf(reader.getTransform()).getId(), "day");
    EXPECT_EQ(Cdl::opOf(reader.getTransformList()[1]).getSlope(), (CDLOp::Params{0.7, 0.75, 0.9}));
    EXPECT_EQ(Cdl::opOf(reader.getTransformList()[1]).getSaturation(), 0.6);
    EXPECT_TRUE(Cdl::opOf(reader.getTransformList()[2]).isNoOp());
}

TEST(CDLReader, readsAFragment)
{
    CDLReader reader;
    reader.readFile(pathOf("shot.cc"));
    EXPECT_EQ(idsOf(reader), std::vector<std::string>{"sc12_sh3"});
    const CDLOp& op = Cdl::opOf(reader.getTransform());
    EXPECT_EQ(op.getOpType(), OP_CDL);
    EXPECT_EQ(op.getSlope(), (CDLOp::Params{1.2, 1.2, 1.2}));
    EXPECT_EQ(op.getOffset(), (CDLOp::Params{-0.05, -0.04, -0.03}));
    EXPECT_EQ(op.getDescriptions(), (Descriptions{"CC: Match of the shots", "CC: InputDesc: Camera log",
                                                  "SOP: ViewingDesc: Rec. 709 monitor"}));
}

TEST(CDLReader, contentDecidesTheFormatNotTheExtension)
{
    const TemporaryDirectory directory;
    CDLReader reader;
    reader.readFile(directory.write("a.cc", load("show.cdl")));
    EXPECT_EQ(idsOf(reader), (std::vector<std::string>{"sc12", "sc13"}));
}

TEST(CDLReader, readsATextInMemory)
{
    for (const char* name : kFiles) {
        CDLReader fromFile;
        fromFile.readFile(pathOf(name));
        CDLReader fromBuffer;
        fromBuffer.readBuffer(load(name).c_str());
        ASSERT_EQ(idsOf(fromBuffer), idsOf(fromFile));
        EXPECT_TRUE(fromBuffer.getTransform()->getOpList().isEqual(fromFile.getTransform()->getOpList()));
    }
}

TEST(CDLReader, failuresOfATextInMemoryNameNoFile)
{
    const auto expectFails = [](const char* text, ErrorId id, const std::string& message) {
        CDLReader reader;
        EXPECT_EQ(failureOf([&] { reader.readBuffer(text); }), (Failure{id, "COLOR:XML:READER", message}));
    };
    expectFails("text", 0x3020002,
                "XML Parsing error: Tag 'ColorDecisionList' missing line 0: File name not specified");
    expectFails(nullptr, 0x3020002,
                "XML Parsing error: Tag 'ColorDecisionList' missing line 0: File name not specified");
    expectFails("<ColorDecisionList/>", 0x302001a, "No color operators found in file: File name not specified");
    expectFails("<ColorCorrection>\n<SOPNode/></ColorCorrection>", 0x302001f,
                "SOPNode: slope required at 'ColorCorrection' line 0: File name not specified");
}

TEST(CDLReader, headOfAFileMustNameARoot)
{
    const std::string message = "XML Parsing error: Tag 'ColorDecisionList' missing line 0: test.cdl";
    Cdl::expectReadFails("", 0x3020002, message);
    Cdl::expectReadFails("<ProcessList id='1'/>\n", 0x3020002, message);
}

TEST(CDLReader, headIsMadeOfWholeLines)
{
    // 5119 characters with their blanks are not enough yet; 5120 are.
    const std::string root = "<ColorCorrection/>";
    const std::string comment = "<!--" + std::string(5118 - 7, 'x') + "-->\n";
    EXPECT_TRUE(reads(comment + root));
    Cdl::expectReadFails(" " + comment + root, 0x3020002,
                         "XML Parsing error: Tag 'ColorDecisionList' missing line 0: test.cdl");
    EXPECT_TRUE(reads("<!--" + std::string(100000, 'x') + "-->" + root));
}

TEST(CDLReader, firstRootInTheHeadDecidesEvenWhereItIsNone)
{
    Cdl::expectReadFails("<!-- no ColorDecisionList -->\n<ColorCorrection/>\n", 0x302001a,
                         "No color operators found in file: test.cdl");
}

TEST(CDLReader, fileThatCannotBeReadFails)
{
    const TemporaryDirectory directory;
    for (const std::string& path : {directory.getPath("missing.cdl"), directory.getPath("")}) {
        CDLReader reader;
        EXPECT_EQ(failureOf([&] { reader.readFile(path); }),
                  (Failure{0x3020018, "COLOR:XML:READER", "File open failed: " + path}));
    }
}

TEST(CDLReader, fileWithoutACorrectionFails)
{
    const std::string message = "No color operators found in file: test.cdl";
    Cdl::expectReadFails(Cdl::list(""), 0x302001a, message);
    Cdl::expectReadFails(Cdl::list(Cdl::decision("")), 0x302001a, message);
    Cdl::expectReadFails(Cdl::list("<ColorCorrection/>"), 0x302001a, message);
    Cdl::expectReadFails(Cdl::collection(""), 0x302001a, message);
}

TEST(CDLReader, brokenXMLFails)
{
    Cdl::expectReadFails("<ColorDecisionList>\n<ColorDecision>\n", 0x3020004,
                         "XML Parsing error (no closing tag for 'ColorDecision') line 2: test.cdl");
    Cdl::expectReadFails("<ColorDecisionList>\n</ColorDecision>\n", 0x3020004,
                         "XML Parsing error (no closing tag for 'ColorDecisionList') line 2: test.cdl");
    Cdl::expectReadFails("<ColorCorrection/>\n<ColorCorrection/>\n", 0x3020001,
                         "XML Parsing error (junk after document element) line 2: test.cdl");
    Cdl::expectReadFails("<ColorCorrection>\n&unknown;</ColorCorrection>\n", 0x3020001,
                         "XML Parsing error (undefined entity) line 2: test.cdl");
    Cdl::expectReadFails(Cdl::fragment("text"), 0x3020005,
                         "XML Parsing error: Attribute end 'text' illegal line 2: test.cdl");
}

TEST(CDLReader, failuresOfTheNodesNameTheRoot)
{
    const std::string open = "<SOPNode>\n<Slope>1 1 1</Slope>\n<Offset>0 0 0</Offset>\n";
    const std::string close = "</SOPNode>\n";
    Cdl::expectReadFails(Cdl::fragment("<SOPNode>\n" + close), 0x302001f,
                         "SOPNode: slope required at 'ColorCorrection' line 3: test.cdl");
    Cdl::expectReadFails(Cdl::fragment("<SOPNode>\n<Slope>1 1 1</Slope>\n" + close), 0x3020020,
                         "SOPNode: offset required at 'ColorCorrection' line 4: test.cdl");
    Cdl::expectReadFails(Cdl::collection("\n" + Cdl::fragment(open + close)), 0x3020021,
                         "SOPNode: power required at 'ColorCorrectionCollection' line 7: test.cdl");
    Cdl::expectReadFails(Cdl::list("<ColorDecision>\n" + Cdl::fragment(open + "<Power>1 1</Power>" + close)), 0x302001e,
                         "SOPNode: 3 values required at 'ColorDecisionList' line 7: test.cdl");
    Cdl::expectReadFails(Cdl::fragment(open + "<Power>1 x 1</Power>" + close), 0x302000e,
                         "Illegal values '1 x 1' in 'ColorCorrection' line 5: test.cdl");
    Cdl::expectReadFails(Cdl::fragment("<SatNode>\n<Saturation>1 1</Saturation></SatNode>\n"), 0x3020022,
                         "SatNode: non-single value at 'ColorCorrection' line 3: test.cdl");
}

TEST(CDLReader, namesAreSpelledInAnyCase)
{
    const std::string text = "<COLORDECISIONLIST><colordecision><colorCorrection id='a'><satnode><SATURATION>2"
                             "</SATURATION></satnode></colorCorrection></colordecision></COLORDECISIONLIST>";
    EXPECT_EQ(Cdl::readOp(text).getSaturation(), 2.0);
}

TEST(CDLReader, lineEndsAndMarksOfOtherSystemsAreGood)
{
    for (const char* name : kFiles) {
        std::string text = "\xef\xbb\xbf";
        for (const char c : load(name))
            text += c == '\n' ? std::string("\r\n") : std::string(1, c);
        CDLReader reader;
        reader.readFile(pathOf(name));
        CDLReader other;
        Cdl::read(other, text);
        ASSERT_EQ(idsOf(other), idsOf(reader));
        EXPECT_TRUE(other.getTransform()->getOpList().isEqual(reader.getTransform()->getOpList())) << name;
    }
}

TEST(CDLReader, numbersDoNotDependOnTheLocale)
{
    const CommaLocale locale;
    CDLReader reader;
    reader.readFile(pathOf("shot.cc"));
    EXPECT_EQ(Cdl::opOf(reader.getTransform()).getSlope(), (CDLOp::Params{1.2, 1.2, 1.2}));
}

TEST(CDLReader, nulBytesFail)
{
    using namespace std::string_literals;
    Cdl::expectReadFails("<ColorCorrection>\n\0</ColorCorrection>\n"s, 0x3020001,
                         "XML Parsing error (not well-formed (invalid token)) line 2: test.cdl");
}

TEST(CDLReader, deepNestingFails)
{
    std::string text = "<ColorCorrection>\n";
    for (int i = 0; i < 100000; ++i)
        text += "<a>";
    Cdl::expectReadFails(text, 0x3020001, "XML Parsing error (Elements nested too deeply) line 2: test.cdl");
}

TEST(CDLReader, descriptionsMayNotGrowWithTheCorrections)
{
    // A few copies of a million characters are fine, and so is one read after the other.
    const std::string description = "<Description>" + std::string(1000000, 'x') + "</Description>\n";
    std::string corrections;
    for (int i = 0; i < 60; ++i)
        corrections += "<ColorCorrection/>\n";
    CDLReader reader;
    for (int i = 0; i < 2; ++i) {
        Cdl::read(reader, Cdl::collection(description + corrections));
        EXPECT_EQ(reader.getTransformList().size(), 60u);
    }
    // 67 copies, with what holds them, are less than 64 MiB, and 68 more.
    Cdl::expectReadFails(Cdl::collection(description + corrections + corrections), 0x3020001,
                         "XML Parsing error (Too many descriptions above corrections) line 70: test.cdl");
}

TEST(CDLReader, anyDamageIsSurvived)
{
    const char nasty[] = {'\0', '<', '>', '"', '&', '\n', ' ', '-', '\x80'};
    for (const char* name : kFiles) {
        const std::string good = load(name);
        const std::size_t end = good.rfind('>');
        EXPECT_TRUE(reads(good)) << name;
        for (std::size_t i = 0; i <= end; i += MORVANE_SAMPLE_STEP) {
            EXPECT_FALSE(reads(good.substr(0, i))) << name << i;
            for (const char c : nasty) {
                std::string text = good;
                text[i] = c;
                reads(text);
            }
        }
    }
}

TEST(CDLReader, eachReadStartsClean)
{
    CDLReader reader;
    reader.readFile(pathOf("looks.ccc"));
    reader.readFile(pathOf("shot.cc"));
    EXPECT_EQ(idsOf(reader), std::vector<std::string>{"sc12_sh3"});
    reader.readFile(pathOf("show.cdl"));
    EXPECT_EQ(reader.getTransformList().size(), 2u);
    EXPECT_EQ(failureOf([&] { reader.readBuffer(""); }).id, 0x3020002u);
    EXPECT_TRUE(reader.getTransformList().empty());
}

TEST(CDLReader, readersWithoutACorrectionShareOneEmptyTransform)
{
    const CDLReader a;
    const CDLReader b;
    ASSERT_NE(a.getTransform(), nullptr);
    EXPECT_TRUE(a.getTransform()->getOpList().empty());
    EXPECT_EQ(a.getTransform(), b.getTransform());
}

TEST(CDLReader, claimsItsExtensionsInAnyCase)
{
    const CDLReader reader;
    EXPECT_STREQ(reader.getName(), "CDL Reader");
    for (const char* name : {"a.cdl", "a.ccc", "a.cc", "A.CDL", "x.y/a.Cc"})
        EXPECT_TRUE(reader.isFileSupported(name)) << name;
    for (const char* name : {"a.ctf", "a.xml", "a.c", "a.cccc", "a", "cdl", ""})
        EXPECT_FALSE(reader.isFileSupported(name)) << name;
}
