#include "xml/pathRepair.h"

#include "tests/xml/ctf.h"
#include "tests/xml/temporaryDirectory.h"

using Color::repairInstalledPath;

namespace {

class PathRepair : public testing::Test
{
protected:
    std::string repair(const std::string& path) const { return repairInstalledPath(path, m_home); }

    TemporaryDirectory m_root;
    std::string m_home = m_root.getPath("shared/2015.1");
};

} // namespace

TEST_F(PathRepair, leavesAPathWithoutTheMarker)
{
    m_root.write("shared/2015.1/a.ctf");
    EXPECT_EQ(repair("/else/2015.1/a.ctf"), "/else/2015.1/a.ctf");
    EXPECT_EQ(repair("C:\\brelwick\\Tandrel\\Morvane\\2015.1\\a.ctf"), "C:\\brelwick\\Tandrel\\Morvane\\2015.1\\a.ctf");
    EXPECT_EQ(repair(""), "");
}

TEST_F(PathRepair, findsTheSameReleaseBesideTheSystemHome)
{
    const std::string path = m_root.write("shared/2014.2/transforms/a.ctf");
    EXPECT_EQ(repair("/opt/Brelwick/Tandrel/Morvane/2014.2/transforms/a.ctf"), path);
}

TEST_F(PathRepair, takesAnySeparators)
{
    const std::string path = m_root.write("shared/2015.1/transforms/a b.ctf");
    EXPECT_EQ(repair("C:\\ProgramData\\Brelwick\\Tandrel\\Morvane\\2015.1\\transforms\\a b.ctf"), path);
    EXPECT_EQ(repair("C:/ProgramData\\Brelwick/Tandrel\\Morvane/2015.1/transforms\\a b.ctf"), path);
}

TEST_F(PathRepair, findsTheFileOfAnotherReleaseInTheSystemHome)
{
    const std::string path = m_root.write("shared/2015.1/transforms/a.ctf");
    EXPECT_EQ(repair("/opt/Brelwick/Tandrel/Morvane/1999.9/transforms/a.ctf"), path);
}

TEST_F(PathRepair, prefersTheReleaseThatThePathNames)
{
    const std::string older = m_root.write("shared/2014.2/a.ctf");
    m_root.write("shared/2015.1/a.ctf");
    EXPECT_EQ(repair("/opt/Brelwick/Tandrel/Morvane/2014.2/a.ctf"), older);
}

TEST_F(PathRepair, systemHomeMayEndInASlash)
{
    const std::string path = m_root.write("shared/2015.1/a.ctf");
    EXPECT_EQ(repairInstalledPath("/opt/Brelwick/Tandrel/Morvane/1999.9/a.ctf", m_home + "/"), path);
}

TEST_F(PathRepair, leavesAPathThatIsNowhereToBeFound)
{
    m_root.write("shared/2015.1/b.ctf");
    for (const char* path : {"/opt/Brelwick/Tandrel/Morvane/2015.1/a.ctf", "x\\Brelwick\\Tandrel\\Morvane\\a.ctf",
                             "/opt/Brelwick/Tandrel/Morvane/", "/opt/Brelwick/Tandrel/Morvane/a.ctf"}) {
        EXPECT_EQ(repair(path), path);
    }
}

TEST_F(PathRepair, reportsFailuresOfTheFileSystem)
{
    m_root.write("shared/2015.1/a.ctf");
    const std::string path = "/Brelwick/Tandrel/Morvane/" + std::string(300, 'n') + ".ctf";
    const Failure failure = failureOf([&] { repair(path); });
    EXPECT_EQ(failure.id, 0x3060004u);
    EXPECT_THAT(failure.message, testing::StartsWith("Filesystem error for '" + path + "': '"));
    EXPECT_THAT(failure.message, testing::HasSubstr("File name too long"));
    EXPECT_EQ(failure.category, "COLOR:XML:IO_READER");
}
