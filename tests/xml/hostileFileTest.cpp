#include "tests/xml/cdl.h"
#include "tests/xml/ctf.h"
#include "tests/xml/halvorn.h"
#include "tests/xml/temporaryDirectory.h"
#include "xml/halvorn1DReader.h"
#include "xml/halvorn3DReader.h"

#include <string>
#include <vector>

using namespace Color;
using testing::ElementsAre;

/// Files made to do harm: none is worth more than a failure with a message.
namespace {

/// Less where sanitizers watch.
constexpr std::size_t kTenMegabytes = 10'000'000 / MORVANE_SAMPLE_STEP;

/// Entities of which the last exceeds the limit of expat when expanded.
std::string manyLaughs(const std::string& laugh = "ha ")
{
    std::string entities = "<!ENTITY laugh0 '" + Halvorn::times(15, laugh) + "'>";
    for (int i = 1; i < 10; ++i) {
        const std::string former = "&laugh" + std::to_string(i - 1) + ";";
        entities += "<!ENTITY laugh" + std::to_string(i) + " '" + Halvorn::times(10, former) + "'>";
    }
    return entities;
}

/// A document type on line 1.
std::string withEntities(const std::string& root, const std::string& entities, const std::string& document)
{
    return "<!DOCTYPE " + root + " [" + entities + "]>\n" + document;
}

std::string ofTenMegabytes(const std::string& text)
{
    return Halvorn::times(static_cast<int>(kTenMegabytes / text.size()), text);
}

void expect1DSyntaxError(const std::string& text)
{
    Halvorn::expectReadFails<Halvorn1DReader>(text, 0x3090002,
                                              "Error reading file: Syntax error reading LUT file in test.lut",
                                              "COLOR:XML:HALVORN_1D_READER", "test.lut");
}

void expect3DFails(const std::string& text, const std::string& reason)
{
    Halvorn::expectReadFails<Halvorn3DReader>(
        text, 0x30a0002, "Error reading file: File: test.3dl not valid. " + reason + " in test.3dl",
        "COLOR:XML:HALVORN_3D_READER", "test.3dl");
}

/// The reader has a transform exactly when it did not fail.
template <class Reader>
void readAny(const std::string& text, const char* fileName)
{
    Reader reader;
    const Failure failure = failureOf([&] { Halvorn::read(reader, text, fileName); });
    EXPECT_EQ(failure == kNoFailure, reader.getTransform() != nullptr);
}

bool readsAsCdl(const std::string& text)
{
    CDLReader reader;
    return failureOf([&] { Cdl::read(reader, text); }) == kNoFailure;
}

/// Files whose content would show if it were read.
class HostileFile : public testing::Test
{
protected:
    /// The same place as a path and as an address.
    std::vector<std::string> spellingsOf(const std::string& path) { return {path, "file://" + path}; }

    const TemporaryDirectory directory;
    const std::string words = directory.write("words.txt", "SECRET");
    const std::string numbers = directory.write("numbers.txt", "1 2 3 4 5 6 7 8 9");
    const std::string declarations = directory.write("words.dtd", "<!ENTITY shown 'SECRET'>");
};

} // namespace

TEST_F(HostileFile, externalEntitiesAreNeverFollowed)
{
    const std::string document = Ctf::document("<Description>[&shown;]</Description>" + Ctf::range(""));
    for (const std::string& path : spellingsOf(words)) {
        const std::string entity = "<!ENTITY shown SYSTEM '" + path + "'>";
        EXPECT_THAT(Ctf::read(withEntities("ProcessList", entity, document))->getDescriptions(), ElementsAre("[]"));
    }
    for (const std::string& path : spellingsOf(declarations)) {
        const std::string entity = "<!ENTITY % more SYSTEM '" + path + "'> %more;";
        EXPECT_THAT(Ctf::read(withEntities("ProcessList", entity, document))->getDescriptions(), ElementsAre("[]"));
        const std::string external = "<!DOCTYPE ProcessList SYSTEM '" + path + "'>\n";
        EXPECT_THAT(Ctf::read(external + document)->getDescriptions(), ElementsAre("[]"));
    }
}

TEST_F(HostileFile, externalEntitiesGiveNoNumbers)
{
    for (const std::string& path : spellingsOf(numbers)) {
        const std::string entity = "<!ENTITY nine SYSTEM '" + path + "'>";
        Ctf::expectReadFails(
            withEntities("ProcessList", entity, Ctf::document(Ctf::matrix("<Array dim='3 3 3'>&nine;</Array>"))),
            0x302000b, "Expected 3x3x3 Array values, found 0 in 'Matrix' line 4: test.ctf");
        Cdl::expectReadFails(
            withEntities("ColorCorrection", entity, Cdl::fragment("<SOPNode>\n<Slope>&nine;</Slope>\n</SOPNode>\n")),
            0x302001e, "SOPNode: 3 values required at 'ColorCorrection' line 4: test.cdl");
    }
}

TEST_F(HostileFile, externalEntityInAnAttributeFails)
{
    const std::string entity = "<!ENTITY shown SYSTEM '" + words + "'>";
    Ctf::expectReadFails(withEntities("ProcessList", entity, "<ProcessList id='&shown;'/>"), 0x3020001,
                         "XML Parsing error (reference to external entity in attribute) line 2: test.ctf");
    Cdl::expectReadFails(withEntities("ColorCorrection", entity, "<ColorCorrection id='&shown;'/>"), 0x3020001,
                         "XML Parsing error (reference to external entity in attribute) line 2: test.cdl");
}

TEST(HostileText, entitiesThatGrowWithoutEndFail)
{
    const std::string reason = "XML Parsing error (limit on input amplification factor (from DTD and entities) "
                               "breached) line ";
    for (const char* content : {"<Description>&laugh9;</Description>", "<Info>&laugh9;</Info>",
                                "<Description name='&laugh9;'/>", "<Foo>&laugh9;</Foo>"}) {
        Ctf::expectReadFails(withEntities("ProcessList", manyLaughs(), Ctf::document(content)), 0x3020001,
                             reason + "3: test.ctf");
        Cdl::expectReadFails(withEntities("ColorCorrection", manyLaughs(), Cdl::fragment(content)), 0x3020001,
                             reason + "3: test.cdl");
    }
    // What was expanded so far is looked at first.
    Ctf::expectReadFails(withEntities("ProcessList", manyLaughs("1 "),
                                      Ctf::document(Ctf::matrix("<Array dim='3 3 3'>&laugh9;</Array>"))),
                         0x302000c, "Expected 3x3 Array, found additional values in 'Matrix' line 4: test.ctf");
}

TEST(HostileText, entitiesThatHoldEachOtherFail)
{
    const std::string entities = "<!ENTITY a '&b;'><!ENTITY b '&a;'>";
    Ctf::expectReadFails(withEntities("ProcessList", entities, Ctf::document("<Description>&a;</Description>")),
                         0x3020001, "XML Parsing error (recursive entity reference) line 3: test.ctf");
    Cdl::expectReadFails(withEntities("ColorCorrection", entities, Cdl::fragment("<Description>&a;</Description>")),
                         0x3020001, "XML Parsing error (recursive entity reference) line 3: test.cdl");
}

TEST(HostileText, linesOfTenMegabytesAreRead)
{
    const std::string text(kTenMegabytes, 'd');
    const std::string description = "<Description>" + text + "</Description>\n";
    EXPECT_TRUE(Ctf::read(Ctf::document(description + Ctf::range("")))->getDescriptions() == Descriptions{text});
    EXPECT_TRUE(Cdl::readOp(Cdl::fragment(description)).getDescriptions() == Descriptions{"CC: " + text});
    const std::string blanks(kTenMegabytes, ' ');
    EXPECT_EQ(Cdl::readOp(Cdl::fragment("<SatNode><Saturation>" + blanks + "2" + blanks + "</Saturation></SatNode>"))
                  .getSaturation(),
              2.0);
    const auto matrix =
        Ctf::read(Ctf::document(Ctf::matrix("<Array dim='3 3 3'>1 2 3 4 5 6 7 8" + blanks + "9</Array>")));
    EXPECT_EQ(Ctf::getOp<MatrixOp>(matrix).getArray().getValues()[10], 9.f);
}

TEST(HostileText, tenMegabytesOfNumbersAreTooMany)
{
    const std::string numbers = ofTenMegabytes("1 ");
    Ctf::expectReadFails(Ctf::document(Ctf::matrix("<Array dim='3 3 3'>" + numbers + "</Array>")), 0x302000c,
                         "Expected 3x3 Array, found additional values in 'Matrix' line 3: test.ctf");
    Ctf::expectReadFails(Ctf::document(Ctf::range("<minInValue>" + numbers + "</minInValue>")), 0x3020016,
                         "Range element: non-single value at 'Range' line 3: test.ctf");
    Cdl::expectReadFails(Cdl::fragment("<SOPNode><Slope>" + numbers + "</Slope></SOPNode>"), 0x302001e,
                         "SOPNode: 3 values required at 'ColorCorrection' line 2: test.cdl");
    Cdl::expectReadFails(Cdl::fragment("<SatNode><Saturation>" + numbers + "</Saturation></SatNode>"), 0x3020022,
                         "SatNode: non-single value at 'ColorCorrection' line 2: test.cdl");
    expect1DSyntaxError(numbers);
    expect3DFails(numbers, "Syntax error.");
}

TEST(HostileText, numberOfTenMegabytesIsANumber)
{
    const std::string digits(kTenMegabytes, '0');
    const auto transform =
        Ctf::read(Ctf::document(Ctf::matrix("<Array dim='3 3 3'>1 2 3 4 5 6 7 8 0." + digits + "1</Array>")));
    EXPECT_EQ(Ctf::getOp<MatrixOp>(transform).getArray().getValues()[10], 0.f);
    EXPECT_EQ(
        Cdl::readOp(Cdl::fragment("<SatNode><Saturation>2." + digits + "</Saturation></SatNode>")).getSaturation(),
        2.0);
    // The lines that a longer one is read as are more than the table has.
    expect1DSyntaxError(digits);
    expect3DFails(digits, "Syntax error.");
}

TEST(HostileText, attributesOfTenMegabytesAreNoneTooMany)
{
    const std::string id(kTenMegabytes, 'i');
    CDLReader reader;
    Cdl::read(reader, "<ColorCorrection id='" + id + "'/>");
    EXPECT_TRUE(Cdl::opOf(reader.getTransform()).getId() == id);

    // A message has room for 1023 characters.
    const std::string dim = ofTenMegabytes("3 ");
    const std::string begin = "Illegal 'Matrix' dimensions '";
    Ctf::expectReadFails(Ctf::document(Ctf::matrix("<Array dim='" + dim + "'>1</Array>")), 0x302000a,
                         begin + dim.substr(0, 1023 - begin.size()));
}

TEST(HostileText, tenMegabytesWithoutDataHoldNone)
{
    for (const char* text : {" ", "\n", "#\n"}) {
        Halvorn::expectReadFails<Halvorn1DReader>(ofTenMegabytes(text), 0x3090002,
                                                  "Error reading file: Premature EOF reading LUT file in test.lut",
                                                  "COLOR:XML:HALVORN_1D_READER", "test.lut");
        expect3DFails(ofTenMegabytes(text), "Unexpected end of file.");
    }
    // What a comment has beyond 199 characters is a line of its own.
    expect1DSyntaxError("#" + ofTenMegabytes("c"));
    expect3DFails("#" + ofTenMegabytes("c"), "Syntax error.");
}

TEST(HostileText, cdlInUtf16HasNoRoot)
{
    using namespace std::string_literals;
    std::string text = "\xff\xfe";
    for (const char c : Cdl::fragment(""))
        text += std::string(1, c) + '\0';
    Cdl::expectReadFails(text, 0x3020002, "XML Parsing error: Tag 'ColorDecisionList' missing line 0: test.cdl");
}

TEST(HostileText, cdlInLatin1IsConverted)
{
    const CDLOp op = Cdl::readOp("<?xml version='1.0' encoding='ISO-8859-1'?>\n" +
                                 Cdl::fragment("<Description>caf\xe9</Description>\n"));
    EXPECT_EQ(op.getDescriptions(), Descriptions{"CC: caf\xc3\xa9"});
    Cdl::expectReadFails(Cdl::fragment("<Description>caf\xe9</Description>\n"), 0x3020001,
                         "XML Parsing error (not well-formed (invalid token)) line 2: test.cdl");
}

TEST(HostileText, elementsOfACdlMayBeDoubledOrRemoved)
{
    const std::string good =
        Cdl::list(Cdl::decision("<ColorCorrection id='a'>\n<Description>d</Description>\n" + Cdl::kSOPNode +
                                "<SatNode>\n<Saturation>1</Saturation>\n</SatNode>\n" + "</ColorCorrection>\n"));
    ASSERT_TRUE(readsAsCdl(good));
    const struct
    {
        const char* name;
        bool survivesRemoval;
    } rows[] = {{"ColorDecision", false}, {"ColorCorrection", false}, {"Description", true},
                {"SOPNode", true},        {"Slope", false},           {"Offset", false},
                {"Power", false},         {"SatNode", true},          {"Saturation", true}};
    for (const auto& row : rows) {
        const std::string close = std::string("</") + row.name + ">";
        std::size_t begin = good.find(std::string("<") + row.name + ">");
        if (begin == std::string::npos) begin = good.find(std::string("<") + row.name + " ");
        ASSERT_NE(begin, std::string::npos) << row.name;
        const std::size_t end = good.find(close, begin) + close.size();
        std::string doubled = good;
        doubled.insert(end, good.substr(begin, end - begin));
        EXPECT_TRUE(readsAsCdl(doubled)) << row.name;
        std::string removed = good;
        removed.erase(begin, end - begin);
        EXPECT_EQ(readsAsCdl(removed), row.survivesRemoval) << row.name;
    }
}

TEST(HostileText, anyByteOfALutMayBeReplaced)
{
    constexpr char nasty[] = {'\0', '\n', '#', ' ', '-', '9', '\x80', '\xff'};
    const std::string curve = "LUT: 1 256 65536F\n" + Halvorn::ramp(256);
    for (std::size_t i = 0; i < curve.size(); i += MORVANE_SAMPLE_STEP) {
        for (const char c : nasty) {
            std::string text = curve;
            text[i] = c;
            readAny<Halvorn1DReader>(text, "test.lut");
        }
    }
    const std::string grid = Halvorn::kMesh + Halvorn::times(Halvorn::kRows, "12 34 567\n");
    for (std::size_t i = 0; i < grid.size(); i += std::size_t{499} * MORVANE_SAMPLE_STEP) {
        for (const char c : nasty) {
            std::string text = grid;
            text[i] = c;
            readAny<Halvorn3DReader>(text, "test.3dl");
        }
    }
}
