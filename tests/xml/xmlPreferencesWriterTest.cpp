#include "xml/xmlPreferencesWriter.h"

#include "tests/xml/preferences.h"
#include "tests/xml/temporaryDirectory.h"
#include "tests/xml/withoutPrivileges.h"

#include <fstream>
#include <iterator>

using namespace Color;

namespace {

constexpr const char* kDefaultTable =
    "   <ReferenceTable>\n"
    "      <Ref alias=\"OutputToSceneBridge\" path=\"misc/identity.ctf\" basePath=\"Brelwick\" />\n"
    "      <Ref alias=\"SceneToOutputBridge\" path=\"RRT+ODT/ACES_to_CIE-XYZ_v0.1.1.ctf\" basePath=\"Brelwick\" />\n"
    "      <Ref alias=\"broadcastMonitor\" path=\"display/broadcast/CIE-XYZ_to_HD-video.ctf\" basePath=\"Brelwick\" "
    "/>\n"
    "      <Ref alias=\"defaultLook\" path=\"misc/identity.ctf\" basePath=\"Brelwick\" />\n"
    "      <Ref alias=\"graphicsMonitor\" path=\"interchange/sRGB/CIE-XYZ_to_sRGB.ctf\" basePath=\"Brelwick\" />\n"
    "   </ReferenceTable>\n";

/// A config file with the five aliases that there always are, after this content.
std::string documentOf(const std::string& content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<MorvaneConfig version=\"1.0\">\n" + content + kDefaultTable +
           "</MorvaneConfig>\n";
}

void writeFile(const std::string& path) { XMLPreferencesWriter().write(Preferences(""), path); }

std::string contentOf(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

Failure writerFailure(ErrorId id, const std::string& message) { return {id, "COLOR:XML:WRITER", message}; }

} // namespace

TEST(XMLPreferencesWriter, writesTheElementsInOrder)
{
    Preferences preferences("2015.1.42");
    preferences.setSharedHome("/site");
    const std::string sharedHome = "   <SharedHome dir=\"/site\" />\n";
    EXPECT_EQ(Prefs::write(preferences), documentOf("   <AutoConfigure graphicsMonitor=\"false\" />\n" + sharedHome));
    preferences.setAutoConfigureMonitorProfile(true);
    EXPECT_EQ(Prefs::write(preferences), documentOf("   <AutoConfigure graphicsMonitor=\"true\" />\n" + sharedHome));
}

TEST(XMLPreferencesWriter, leavesOutASharedHomeThatIsNotSet)
{
    const Preferences preferences(Prefs::kVersion);
    const std::string text = Prefs::write(preferences);
    EXPECT_EQ(text, documentOf("   <AutoConfigure graphicsMonitor=\"false\" />\n"));
    Prefs::expectEqual(Prefs::read(text), preferences);
}

TEST(XMLPreferencesWriter, writesTheBasePathsByName)
{
    Preferences preferences("");
    preferences.setAlias("0", "a", BASE_PATH_NONE);
    preferences.setAlias("1", "b", BASE_PATH_BRELWICK);
    preferences.setAlias("2", "c", BASE_PATH_SHARED);
    const std::string text = Prefs::write(preferences);
    EXPECT_NE(text.find("   <ReferenceTable>\n"
                        "      <Ref alias=\"0\" path=\"a\" />\n"
                        "      <Ref alias=\"1\" path=\"b\" basePath=\"Brelwick\" />\n"
                        "      <Ref alias=\"2\" path=\"c\" basePath=\"Shared\" />\n"),
              std::string::npos)
        << text;
}

TEST(XMLPreferencesWriter, escapes)
{
    Preferences preferences("");
    preferences.setSharedHome("/<\"shared\"> & 'home'");
    EXPECT_NE(
        Prefs::write(preferences).find("<SharedHome dir=\"/&lt;&quot;shared&quot;&gt; &amp; &apos;home&apos;\" />\n"),
        std::string::npos);
}

TEST(XMLPreferencesWriter, awkwardTextsAreReadAsTheyWere)
{
    Preferences all(Prefs::kVersion);
    for (const char* text : Prefs::kAwkwardTexts) {
        Preferences preferences(Prefs::kVersion);
        preferences.setSharedHome(text);
        preferences.setAlias(text, text, BASE_PATH_SHARED);
        all.setAlias(text, text, BASE_PATH_NONE);
        Prefs::expectEqual(Prefs::read(Prefs::write(preferences)), preferences);
    }
    Prefs::expectEqual(Prefs::read(Prefs::write(all)), all);
}

TEST(XMLPreferencesWriter, refusesWhatCouldNotBeReadAgain)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("a.xml", "former content");
    for (const char* text : {"a\nb", "a\rb", "a\tb", "\x01", "\x1f", "\xff", "\xc3", "\xed\xa0\x80", "\xef\xbf\xbe"}) {
        const Failure wanted = writerFailure(0x1010006, "Name is not allowed: " + std::string(text) + ".");
        Preferences byAlias("");
        byAlias.setAlias(text, "x", BASE_PATH_NONE);
        Preferences byPath("");
        byPath.setAlias("x", text, BASE_PATH_NONE);
        Preferences bySharedHome("");
        bySharedHome.setSharedHome(text);
        for (const Preferences& preferences : {byAlias, byPath, bySharedHome}) {
            EXPECT_EQ(failureOf([&] { Prefs::write(preferences); }), wanted);
            EXPECT_EQ(failureOf([&] { XMLPreferencesWriter().check(preferences); }), wanted);
            EXPECT_EQ(failureOf([&] { XMLPreferencesWriter().write(preferences, path); }), wanted);
        }
    }
    EXPECT_EQ(contentOf(path), "former content");
}

TEST(XMLPreferencesWriter, writesOverAFile)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("a.xml", std::string(10000, 'x'));
    writeFile(path);
    EXPECT_EQ(contentOf(path), Prefs::write(Preferences("")));
}

TEST(XMLPreferencesWriter, refusesAPathWithoutADirectory)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("missing/a.xml");
    EXPECT_EQ(failureOf([&] { writeFile(path); }), writerFailure(0x3030004, "Invalid path: '" + path + "'"));
}

TEST(XMLPreferencesWriter, respectsPermissions)
{
    namespace fs = boost::filesystem;
    const TemporaryDirectory directory;
    const std::string readOnlyFile = directory.write("a.xml", "former content");
    fs::permissions(readOnlyFile, fs::owner_read);
    const std::string readOnlyDirectory = directory.getPath("d");
    fs::create_directory(readOnlyDirectory);
    fs::permissions(readOnlyDirectory, fs::owner_read | fs::owner_exe);
    const std::string newFile = readOnlyDirectory + "/a.xml";
    {
        const WithoutPrivileges scope;
        EXPECT_EQ(failureOf([&] { writeFile(readOnlyFile); }),
                  writerFailure(0x3030003,
                                "Unable to overwrite existing file: '" + readOnlyFile + "'.  Check file permissions."));
        EXPECT_EQ(failureOf([&] { writeFile(newFile); }),
                  writerFailure(0x3030002, "Unable to write file: '" + newFile + "'.  Check directory permissions."));
    }
    EXPECT_EQ(contentOf(readOnlyFile), "former content");
    fs::permissions(readOnlyDirectory, fs::owner_all);
}

TEST(XMLPreferencesWriter, aFullDiskIsAFailure)
{
    EXPECT_EQ(
        failureOf([] { writeFile("/dev/full"); }),
        (Failure{0x3060004, "COLOR:XML:IO_READER", "Filesystem error for '/dev/full': 'No space left on device"}));
}

TEST(XMLPreferencesWriter, writesTheConfigFileThatShipsAsItIs)
{
    XMLPreferencesReader reader("");
    reader.readFile(MORVANE_SHIPPED_CONFIG);
    std::ostringstream written;
    XMLPreferencesWriter().write(*reader.getPreferences(), written);
    EXPECT_EQ(written.str(), contentOf(MORVANE_SHIPPED_CONFIG));
    // The aliases that there always are, and the one that monitor profiles refer to.
    Preferences expected("");
    expected.setAlias("defaultGamutMap", "misc/gamut-map.ctf", BASE_PATH_BRELWICK);
    EXPECT_EQ(reader.getPreferences()->getAliases(), expected.getAliases());
}
