#include "xml/fileIOManager.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/scopedVariable.h"
#include "tests/xml/ctf.h"
#include "tests/xml/halvorn.h"
#include "tests/xml/temporaryDirectory.h"
#include "utils/paths.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Color;

TEST(FileIOManager, listsWhatItReads)
{
    const auto& extensions = FileIOManager::getSupportedExtensions();
    std::vector<std::string> texts;
    for (const auto& entry : extensions)
        texts.push_back(entry.extension + ": " + entry.description);
    EXPECT_EQ(texts, (std::vector<std::string>{
                         "ctf: ctf",
                         "cdl: ASC CDL color decision list XML format",
                         "ccc: ASC CDL color correction collection XML format",
                         "cc: CDL fragment format",
                         "lut: Halvorn 1d-LUT format",
                         "3dl: Halvorn 3d-LUT format",
                         "icm: ICC Profile file extension",
                         "icc: ICC Profile file extension",
                         "pf: ICC Profile file extension",
                     }));
    EXPECT_EQ(&extensions, &FileIOManager::getSupportedExtensions());
}

TEST(FileIOManager, judgesByTheExtensionOfAFileThatNeedNotExist)
{
    EXPECT_TRUE(FileIOManager::isFileSupported("/no/such/a.ctf"));
    EXPECT_TRUE(FileIOManager::isFileSupported("a.xml"));
    EXPECT_FALSE(FileIOManager::isFileSupported("a.CTF"));
    for (const char* name : {"a.cdl", "A.CDL", "a.ccc", "a.cc", "/no/such/a.lut", "a.LUT", "a.3dl", "a.3DL", "a.icm",
                             "A.ICC", "/no/such/a.pf"})
        EXPECT_TRUE(FileIOManager::isFileSupported(name)) << name;
    EXPECT_FALSE(FileIOManager::isFileSupported("a.png"));
    EXPECT_FALSE(FileIOManager::isFileSupported("a"));
}

TEST(FileIOManager, loadsAFile)
{
    EXPECT_EQ(FileIOManager::load(MORVANE_TEST_DATA "/ctf/range.ctf")->getId(), "clamp");
    EXPECT_EQ(FileIOManager::load(MORVANE_TEST_DATA "/ctf/range.xml")->getId(), "clamp");
}

TEST(FileIOManager, loadsWhatOtherFormatsHold)
{
    const auto opTypeOf = [](const std::string& path) {
        return FileIOManager::load(path)->getOpList().get(0)->getOpType();
    };
    EXPECT_EQ(opTypeOf(MORVANE_TEST_DATA "/cdl/show.cdl"), OP_CDL);
    EXPECT_EQ(opTypeOf(MORVANE_TEST_DATA "/cdl/looks.ccc"), OP_CDL);
    EXPECT_EQ(opTypeOf(MORVANE_TEST_DATA "/cdl/shot.cc"), OP_CDL);
    EXPECT_EQ(opTypeOf(MORVANE_TEST_DATA "/halvorn/negative.lut"), OP_LUT_1D);
    const TemporaryDirectory directory;
    EXPECT_EQ(opTypeOf(directory.write("a.3dl", Halvorn::times(Halvorn::kRows, "1 2 3\n"))), OP_LUT_3D);
}

TEST(FileIOManager, failuresAreThoseOfTheOneReader)
{
    const TemporaryDirectory directory;
    const auto expectFails = [](const std::string& path, ErrorId id, const std::string& message, const char* category) {
        Ctf::expectFailure(failureOf([&] { FileIOManager::load(path); }), id, message, category);
    };
    const std::string cdl = directory.write("a.cdl", "<ColorDecisionList>\n</ColorDecisionList>\n");
    const std::string lut = directory.write("a.LUT", "LUT: 2 256\n");
    const std::string cube = directory.write("a.3dl", "1 2 3\n");
    expectFails(cdl, 0x302001a, "No color operators found in file: " + cdl, "COLOR:XML:READER");
    expectFails(lut, 0x3090002, "Error reading file: Syntax error reading LUT file in " + lut,
                "COLOR:XML:HALVORN_1D_READER");
    expectFails(cube, 0x30a0004, "3d-LUT must have 17x17x17 rows of values: " + cube, "COLOR:XML:HALVORN_3D_READER");
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

TEST(FileIOManager, loadsAFileOfAnotherInstallation)
{
    const TemporaryDirectory directory;
    directory.write("shared/2015.1/transforms/a.cc", "<ColorCorrection id='moved'/>\n");
    // The paths of this process stay as they are.
    ChildProcess process([&] {
        const ScopedVariable noOverride("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", nullptr);
        const std::string home = directory.getPath("shared/2015.1");
        configurePaths(home.c_str(), (home + "/morvaneConfig.xml").c_str(), home.c_str());
        const auto transform = FileIOManager::load("C:\\Brelwick\\Tandrel\\Morvane\\2014.2\\transforms\\a.cc");
        EXPECT_EQ(transform->getOpList().get(0)->getId(), "moved");
        const std::string missing = "/opt/Brelwick/Tandrel/Morvane/2014.2/transforms/b.cc";
        Ctf::expectFailure(failureOf([&] { FileIOManager::load(missing); }), 0x3060003,
                           "No file found: '" + missing + "'", "COLOR:XML:IO_READER");
    });
    EXPECT_TRUE(process.succeeds());
}
