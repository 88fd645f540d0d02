#include "xml/fileIOManager.h"

#include "tests/xml/ctf.h"
#include "tests/xml/temporaryDirectory.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Color;

TEST(FileIOManager, listsWhatItReads)
{
    const auto& extensions = FileIOManager::getSupportedExtensions();
    ASSERT_EQ(extensions.size(), 1u);
    EXPECT_EQ(extensions[0].extension, "ctf");
    EXPECT_EQ(extensions[0].description, "ctf");
    EXPECT_EQ(&extensions, &FileIOManager::getSupportedExtensions());
}

TEST(FileIOManager, judgesByTheExtensionOfAFileThatNeedNotExist)
{
    EXPECT_TRUE(FileIOManager::isFileSupported("/no/such/a.ctf"));
    EXPECT_TRUE(FileIOManager::isFileSupported("a.xml"));
    EXPECT_FALSE(FileIOManager::isFileSupported("a.CTF"));
    EXPECT_FALSE(FileIOManager::isFileSupported("a.png"));
    EXPECT_FALSE(FileIOManager::isFileSupported("a"));
}

TEST(FileIOManager, loadsAFile)
{
    EXPECT_EQ(FileIOManager::load(MORVANE_TEST_DATA "/ctf/range.ctf")->getId(), "clamp");
    EXPECT_EQ(FileIOManager::load(MORVANE_TEST_DATA "/ctf/range.xml")->getId(), "clamp");
}

TEST(FileIOManager, failuresNameThePath)
{
    const TemporaryDirectory directory;
    const std::string png = directory.write("a.png");
    const std::string empty = directory.write("a.ctf");
    const auto expectFails = [](const std::string& path, ErrorId id, const std::string& message, const char* category) {
        Ctf::expectFailure(failureOf([&] { FileIOManager::load(path); }), id, message, category);
    };
    expectFails(png, 0x3060001, "Unsupported file format: '" + png + "'", "COLOR:XML:IO_READER");
    expectFails("/no/such/a.ctf", 0x3060003, "No file found: '/no/such/a.ctf'", "COLOR:XML:IO_READER");
    expectFails(empty, 0x3010002, "Transform invalid: '" + empty + "'", "COLOR:XML:ALL");
}

TEST(FileIOManager, fileThatCannotBeOpenedFails)
{
    // A socket lies there like a file, but nobody can open it as one, whatever rights he has.
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("a.ctf");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int socketHandle = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(socketHandle, 0);
    ASSERT_EQ(bind(socketHandle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    Ctf::expectFailure(failureOf([&] { FileIOManager::load(path); }), 0x3020018, "File open failed: " + path);
    close(socketHandle);
}

TEST(FileIOManager, documentOfAnotherKindFails)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("a.xml", "<ColorCorrection id='1'><SOPNode/></ColorCorrection>\n");
    Ctf::expectFailure(failureOf([&] { FileIOManager::load(path); }), 0x3010002, "Transform invalid: '" + path + "'",
                       "COLOR:XML:ALL");
}

TEST(FileIOManager, leavesPathsWithoutTheMarker) { EXPECT_EQ(FileIOManager::repairPath("a\\b.ctf"), "a\\b.ctf"); }
