#include "xml/xmlPreferencesReader.h"

#include "tests/utils/logRecorder.h"
#include "tests/xml/preferences.h"
#include "tests/xml/temporaryDirectory.h"

#include <fstream>
#include <iterator>

using namespace Color;

namespace {

const std::string kFull = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<MorvaneConfig version=\"1.0\">\n"
                          "   <AutoConfigure graphicsMonitor=\"true\" />\n"
                          "   <SharedHome dir=\"/site/transforms\" />\n"
                          "   <ReferenceTable>\n"
                          "      <Ref alias=\"defaultLook\" path=\"show.ctf\" basePath=\"Shared\" />\n"
                          "      <Ref alias=\"grade\" path=\"/grades/1.ctf\" />\n"
                          "      <Ref alias=\"in\" path=\"in.ctf\" basePath=\"bReLwIcK\" />\n"
                          "   </ReferenceTable>\n"
                          "</MorvaneConfig>\n";

const std::string kNoTable = "A reference entry cannot be outside a reference table at line ";

/// True when the text loads as a file.
bool loads(const std::string& text)
{
    XMLPreferencesReader reader(Prefs::kVersion);
    try {
        Prefs::read(reader, text);
    } catch (const Exception& exception) {
        EXPECT_NE(exception.getId(), 0u);
        EXPECT_EQ(reader.getPreferences(), nullptr);
        return false;
    }
    EXPECT_NE(reader.getPreferences(), nullptr);
    return true;
}

} // namespace

TEST(XMLPreferencesReader, readsAll)
{
    const Preferences preferences = Prefs::read(kFull);
    EXPECT_TRUE(preferences.getAutoConfigureMonitorProfile());
    EXPECT_EQ(preferences.getSharedHome(), "/site/transforms");
    EXPECT_EQ(preferences.findAlias("defaultLook"), (AliasEntry{"show.ctf", BASE_PATH_SHARED}));
    EXPECT_EQ(preferences.findAlias("grade"), (AliasEntry{"/grades/1.ctf", BASE_PATH_NONE}));
    EXPECT_EQ(preferences.findAlias("in"), (AliasEntry{"in.ctf", BASE_PATH_BRELWICK}));
    // The other four that there always are.
    EXPECT_EQ(preferences.getAliases().size(), 7u);
    EXPECT_EQ(preferences.findAlias("graphicsMonitor"), Preferences("").findAlias("graphicsMonitor"));
}

TEST(XMLPreferencesReader, theVersionIsItsOwn)
{
    EXPECT_EQ(Prefs::read(kFull).getVersion(), "2015.1.42");
    EXPECT_EQ(Prefs::read("<MorvaneConfig version='99.9'/>").getVersion(), "2015.1.42");
}

TEST(XMLPreferencesReader, anEmptyRootGivesTheDefaults)
{
    for (const char* text : {"<MorvaneConfig/>", "<MorvaneConfig></MorvaneConfig>", "<MorvaneConfig other='1'/>",
                             "<MorvaneConfig><ReferenceTable/></MorvaneConfig>"}) {
        Prefs::expectEqual(Prefs::read(text), Preferences(Prefs::kVersion));
    }
}

TEST(XMLPreferencesReader, anEntryReplacesADefaultOne)
{
    const Preferences preferences = Prefs::read(Prefs::table("<Ref alias=\"defaultLook\" path=\"x.ctf\"/>"));
    EXPECT_EQ(preferences.findAlias("defaultLook"), (AliasEntry{"x.ctf", BASE_PATH_NONE}));
    EXPECT_EQ(preferences.getAliases().size(), 5u);
}

TEST(XMLPreferencesReader, theLastEntryOfANameCounts)
{
    const std::string table = "<ReferenceTable><Ref alias='a' path='1' basePath='Shared'/><Ref alias='a' path='2'/>"
                              "</ReferenceTable>\n";
    EXPECT_EQ(Prefs::read(Prefs::document(table)).findAlias("a"), (AliasEntry{"2", BASE_PATH_NONE}));
    const std::string another = "<ReferenceTable><Ref alias='a' path='3'/></ReferenceTable>\n";
    EXPECT_EQ(Prefs::read(Prefs::document(table + another)).findAlias("a").path, "3");
}

TEST(XMLPreferencesReader, namesAreSpelledInAnyCase)
{
    const Preferences preferences =
        Prefs::read("<morvaneconfig VERSION='1'><AUTOCONFIGURE GRAPHICSMONITOR='true'/><sharedHOME Dir='/s'/>"
                    "<referencetable><REF Alias='a' PATH='b' BASEPATH='Shared'/></referencetable></morvaneconfig>");
    EXPECT_TRUE(preferences.getAutoConfigureMonitorProfile());
    EXPECT_EQ(preferences.getSharedHome(), "/s");
    EXPECT_EQ(preferences.findAlias("a"), (AliasEntry{"b", BASE_PATH_SHARED}));
}

TEST(XMLPreferencesReader, onlyTrueSwitchesOn)
{
    const auto isOn = [](const std::string& attributes) {
        const LogRecorder log;
        const bool value =
            Prefs::read(Prefs::document("<AutoConfigure " + attributes + "/>")).getAutoConfigureMonitorProfile();
        EXPECT_TRUE(log.lines().empty()) << attributes;
        return value;
    };
    for (const char* value : {"true", "TRUE", "True"})
        EXPECT_TRUE(isOn("graphicsMonitor='" + std::string(value) + "'")) << value;
    for (const char* value : {"yes", "1", "", "false", " true", "truee", "on"})
        EXPECT_FALSE(isOn("graphicsMonitor='" + std::string(value) + "'")) << value;
    EXPECT_FALSE(isOn(""));
    EXPECT_FALSE(isOn("monitor='true'"));
}

TEST(XMLPreferencesReader, anUnknownBasePathIsLoggedAndNone)
{
    const LogRecorder log;
    const Preferences preferences = Prefs::read(Prefs::table("<Ref alias='a' path='b' basePath='Home'/>\n"));
    EXPECT_EQ(preferences.findAlias("a"), (AliasEntry{"b", BASE_PATH_NONE}));
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_EQ(log.lines()[0].first, LOG_LEVEL_DEBUG);
    EXPECT_EQ(log.lines()[0].second, "COLOR:XML:PREFS_READER: Illegal 'basePath' attribute 'Home' in 'MorvaneConfig' "
                                     "line 3: test.xml");
}

TEST(XMLPreferencesReader, anEmptyBasePathIsNone)
{
    const LogRecorder log;
    EXPECT_EQ(Prefs::read(Prefs::table("<Ref alias='a' path='b' basePath=''/>\n")).findAlias("a").basePath,
              BASE_PATH_NONE);
    EXPECT_TRUE(log.lines().empty());
}

TEST(XMLPreferencesReader, unknownElementsAreLoggedAndSkipped)
{
    const LogRecorder log;
    const Preferences preferences =
        Prefs::read(Prefs::document("<Future a='b'>text\n<Deeper>text</Deeper></Future>\n<SharedHome dir='/s'/>\n"));
    EXPECT_EQ(preferences.getSharedHome(), "/s");
    ASSERT_EQ(log.lines().size(), 2u);
    EXPECT_EQ(log.lines()[0].first, LOG_LEVEL_DEBUG);
    EXPECT_EQ(log.lines()[0].second, "Ignore element 'Future' (line 2) where its parent is 'MorvaneConfig' (line 1) "
                                     "test.xml: : Unknown element");
    EXPECT_EQ(log.lines()[1].second,
              "Ignore element 'Deeper' (line 3) where its parent is 'Future' (line 2) test.xml: : Unknown element");
}

TEST(XMLPreferencesReader, textsOfElementsAreIgnored)
{
    const Preferences preferences = Prefs::read(
        Prefs::document("<SharedHome dir='/s'>text</SharedHome><AutoConfigure graphicsMonitor='true'>x</AutoConfigure>"
                        "<ReferenceTable><Ref alias='a' path='b'>text</Ref></ReferenceTable>"));
    EXPECT_EQ(preferences.getSharedHome(), "/s");
    EXPECT_EQ(preferences.findAlias("a").path, "b");
}

TEST(XMLPreferencesReader, theRootStandsFirstAndOnce)
{
    Prefs::expectReadFails(Prefs::document("<MorvaneConfig/>\n"), 0x3050005,
                           "Morvane config was found more than once at line 2: test.xml");
    Prefs::expectReadFails(Prefs::document("<Future>\n<MorvaneConfig/></Future>\n"), 0x3050005,
                           "Morvane config was found more than once at line 3: test.xml");
    Prefs::expectReadFails("<Other>\n<MorvaneConfig/>\n</Other>\n", 0x3050007,
                           "Morvane config tag must be the first element. At line 2: test.xml");
}

TEST(XMLPreferencesReader, anEmptyVersionFails)
{
    Prefs::expectReadFails("\n<MorvaneConfig version=''/>", 0x3050003,
                           "Version value cannot be empty at 'MorvaneConfig' line 2: test.xml");
}

TEST(XMLPreferencesReader, theSharedHomeStandsInTheRootOnce)
{
    Prefs::expectReadFails("<SharedHome dir='/s'/>", 0x3050009,
                           "The shared path element is not within a MorvaneConfig element at line 1: test.xml");
    Prefs::expectReadFails(Prefs::table("<SharedHome dir='/s'/>\n"), 0x3050009,
                           "The shared path element is not within a MorvaneConfig element at line 3: test.xml");
    Prefs::expectReadFails(Prefs::document("<Future><SharedHome dir='/s'/></Future>\n"), 0x3050009,
                           "The shared path element is not within a MorvaneConfig element at line 2: test.xml");
    Prefs::expectReadFails(Prefs::document("<SharedHome dir='/s'/>\n<SharedHome dir='/s'/>\n"), 0x3050006,
                           "Shared home path cannot be set more than once at line 3: test.xml");
}

TEST(XMLPreferencesReader, theSharedHomeNeedsADirectory)
{
    for (const char* text : {"<SharedHome/>\n", "<SharedHome dir=''/>\n", "<SharedHome path='/s'/>\n"}) {
        Prefs::expectReadFails(Prefs::document(text), 0x3050004,
                               "Dir value cannot be empty at 'MorvaneConfig' line 2: test.xml");
    }
}

TEST(XMLPreferencesReader, theTableStandsInTheRoot)
{
    const std::string message = "The reference table element is not within a MorvaneConfig element at line ";
    Prefs::expectReadFails("<ReferenceTable/>", 0x305000a, message + "1: test.xml");
    Prefs::expectReadFails(Prefs::table("<ReferenceTable/>\n"), 0x305000a, message + "3: test.xml");
    Prefs::expectReadFails(Prefs::document("<Future>\n<ReferenceTable/></Future>\n"), 0x305000a,
                           message + "3: test.xml");
}

TEST(XMLPreferencesReader, entriesStandInTheTable)
{
    const std::string entry = "<Ref alias='a' path='b'/>\n";
    Prefs::expectReadFails(entry, 0x3050008, kNoTable + "1: test.xml");
    Prefs::expectReadFails(Prefs::document(entry), 0x3050008, kNoTable + "2: test.xml");
    Prefs::expectReadFails(Prefs::table("<Ref alias='a' path='b'>\n" + entry + "</Ref>\n"), 0x3050008,
                           kNoTable + "4: test.xml");
    Prefs::expectReadFails(Prefs::table("<Future>\n" + entry + "</Future>\n"), 0x3050008, kNoTable + "4: test.xml");
}

TEST(XMLPreferencesReader, entriesNeedAnAliasAndAPath)
{
    for (const char* text : {"<Ref path='b'/>\n", "<Ref alias='' path='b'/>\n", "<Ref/>\n"}) {
        Prefs::expectReadFails(Prefs::table(text), 0x3050001,
                               "Alias value cannot be empty at 'MorvaneConfig' line 3: test.xml");
    }
    for (const char* text : {"<Ref alias='a'/>\n", "<Ref alias='a' path=''/>\n", "<Ref path='' alias='a'/>\n"}) {
        Prefs::expectReadFails(Prefs::table(text), 0x3050002,
                               "Path value cannot be empty at 'MorvaneConfig' line 3: test.xml");
    }
}

TEST(XMLPreferencesReader, theSwitchStandsInTheRoot)
{
    const std::string message = "The AutoConfigure element is not within a MorvaneConfig element at line ";
    Prefs::expectReadFails("<AutoConfigure/>", 0x305000b, message + "1: test.xml");
    Prefs::expectReadFails(Prefs::table("<AutoConfigure graphicsMonitor='true'/>\n"), 0x305000b,
                           message + "3: test.xml");
}

TEST(XMLPreferencesReader, aFileWithoutARootFails)
{
    for (const char* text :
         {"", "\n\n", "   ", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", "<!-- nothing -->\n", "<Other/>\n"}) {
        Prefs::expectReadFails(text, 0x305000c, "The preferences were not loaded: test.xml");
    }
}

TEST(XMLPreferencesReader, aFileThatCannotBeOpenedFails)
{
    const TemporaryDirectory directory;
    for (const std::string& path : {directory.getPath("missing.xml"), directory.getPath("")}) {
        XMLPreferencesReader reader(Prefs::kVersion);
        EXPECT_EQ(failureOf([&] { reader.readFile(path); }),
                  (Failure{0x3020018, "COLOR:XML:READER", "File open failed: " + path}));
        EXPECT_EQ(reader.getPreferences(), nullptr);
    }
}

TEST(XMLPreferencesReader, brokenXMLFails)
{
    const std::string category = "COLOR:XML:READER";
    Prefs::expectReadFails("<MorvaneConfig>\n<ReferenceTable>\n", 0x3020004,
                           "XML Parsing error (no closing tag for 'ReferenceTable') line 2: test.xml", category);
    Prefs::expectReadFails("<MorvaneConfig>\n</ReferenceTable>\n", 0x3020004,
                           "XML Parsing error (no closing tag for 'MorvaneConfig') line 2: test.xml", category);
    Prefs::expectReadFails("<MorvaneConfig/>\n<MorvaneConfig/>\n", 0x3020001,
                           "XML Parsing error (junk after document element) line 2: test.xml", category);
    Prefs::expectReadFails("<a b>", 0x3020001, "XML Parsing error (not well-formed (invalid token)) line 1: test.xml",
                           category);
    Prefs::expectReadFails(Prefs::document("text\n"), 0x3020005,
                           "XML Parsing error: Attribute end 'text' illegal line 2: test.xml", category);
    Prefs::expectReadFails(Prefs::table("text\n"), 0x3020005,
                           "XML Parsing error: Attribute end 'text' illegal line 3: test.xml", category);
}

TEST(XMLPreferencesReader, aFileCutAtAnyByteFails)
{
    const std::size_t end = kFull.rfind('>');
    for (std::size_t size = 0; size <= end; ++size)
        EXPECT_FALSE(loads(kFull.substr(0, size))) << size;
    EXPECT_TRUE(loads(kFull.substr(0, end + 1)));
}

TEST(XMLPreferencesReader, anyByteMayBeReplaced)
{
    const char nasty[] = {'\0', '<', '>', '"', '&', '\'', '\n', ']', ' ', '9', '-', '\x80', '\xff'};
    std::size_t survivors = 0;
    for (std::size_t i = 0; i < kFull.size(); ++i) {
        for (const char c : nasty) {
            std::string text = kFull;
            text[i] = c;
            survivors += loads(text) ? 1U : 0U;
        }
    }
    EXPECT_GT(survivors, 0u);
    EXPECT_LT(survivors, kFull.size() * std::size(nasty));
}

TEST(XMLPreferencesReader, lineEndsAndMarksOfOtherSystemsAreGood)
{
    std::string text = "\xef\xbb\xbf";
    for (const char c : kFull)
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    Prefs::expectEqual(Prefs::read(text), Prefs::read(kFull));
}

TEST(XMLPreferencesReader, deepNestingFails)
{
    std::string text = "<MorvaneConfig>\n";
    for (int i = 0; i < 100000; ++i)
        text += "<a>";
    Prefs::expectReadFails(text, 0x3020001, "XML Parsing error (Elements nested too deeply) line 2: test.xml",
                           "COLOR:XML:READER");
}

TEST(XMLPreferencesReader, eachReadStartsClean)
{
    XMLPreferencesReader reader(Prefs::kVersion);
    Prefs::read(reader, kFull);
    Prefs::read(reader, Prefs::document("<SharedHome dir='/s'/>\n"));
    EXPECT_EQ(reader.getPreferences()->getSharedHome(), "/s");
    EXPECT_EQ(reader.getPreferences()->getAliases(), Preferences("").getAliases());
    EXPECT_EQ(failureOf([&] { Prefs::read(reader, ""); }).id, 0x305000cu);
    EXPECT_EQ(reader.getPreferences(), nullptr);
}

TEST(PreferencesDocumentation, itsExampleLoads)
{
    std::ifstream file(MORVANE_TEST_DATA "/../../docs/preferences.md");
    const std::string page(std::istreambuf_iterator<char>(file), {});
    const std::string open = "```xml\n";
    const std::size_t begin = page.find(open);
    ASSERT_NE(begin, std::string::npos);
    const std::size_t end = page.find("```", begin + open.size());
    const std::string example = page.substr(begin + open.size(), end - begin - open.size());
    const Preferences preferences = Prefs::read(example);
    EXPECT_FALSE(preferences.getAutoConfigureMonitorProfile());
    EXPECT_EQ(preferences.getSharedHome(), "/site/transforms");
    EXPECT_EQ(preferences.findAlias("showLook"), (AliasEntry{"looks/night.ctf", BASE_PATH_SHARED}));
    EXPECT_EQ(preferences.findAlias("graphicsMonitor"), (AliasEntry{"/site/monitors/12.ctf", BASE_PATH_NONE}));
}
