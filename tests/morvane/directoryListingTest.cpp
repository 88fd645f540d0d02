#include "morvane/directoryListing.h"

#include "tests/utils/failure.h"
#include "tests/xml/temporaryDirectory.h"
#include "tests/xml/withoutPrivileges.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using Morvane_2015_1_42::Impl::DirectoryListing;
using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

/// A listing of one directory, and that directory.
class DirectoryListingTest : public testing::Test
{
protected:
    DirectoryListingTest()
    {
        fs::create_directory(m_path);
        m_listing.setPath(m_path);
    }

    void write(const std::string& name) const { m_root.write("transforms/" + name); }
    void makeDirectory(const std::string& name) const { fs::create_directories(m_path + "/" + name); }

    Names getFiles() { return m_listing.getContent()->files; }
    Names getDirectories() { return m_listing.getContent()->directories; }
    Failure getFailure()
    {
        return failureOf([&] { m_listing.getContent(); });
    }

    /// Changes the directory, and lets it look as if that had been at this time.
    void changeAt(fs::file_time_type time, const std::string& newName) const
    {
        write(newName);
        fs::last_write_time(m_path, time);
    }

    static Failure failure(Color::ErrorId id, const std::string& message)
    {
        return {id, "COLOR:MORVANE:PATH", message};
    }

    TemporaryDirectory m_root;
    const std::string m_path = m_root.getPath("transforms");
    DirectoryListing m_listing;
};

} // namespace

TEST_F(DirectoryListingTest, keepsDirectoriesAndFilesApart)
{
    write("a.ctf");
    write("below/b.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
    EXPECT_EQ(getDirectories(), Names{"below"});
}

TEST_F(DirectoryListingTest, emptyDirectoryHasNothing)
{
    EXPECT_EQ(getFiles(), Names());
    EXPECT_EQ(getDirectories(), Names());
}

TEST_F(DirectoryListingTest, listsTheFilesWhoseExtensionIsReadInAnyCase)
{
    for (const char* name : {"a.ctf", "b.CTF", "c.Cdl", "d.ccc", "e.cc", "f.LUT", "g.3dl", "h.x.ctf", "no", "ctf", "i.",
                             "j.ctf.bak", "k.ctfx", "l.xml", "m.txt", "n.ctf "}) {
        write(name);
    }
    EXPECT_EQ(getFiles(), (Names{"a.ctf", "b.CTF", "c.Cdl", "d.ccc", "e.cc", "f.LUT", "g.3dl", "h.x.ctf"}));
    EXPECT_EQ(getDirectories(), Names());
}

TEST_F(DirectoryListingTest, directoryMayHaveTheExtensionOfAFile)
{
    makeDirectory("a.ctf");
    EXPECT_EQ(getFiles(), Names());
    EXPECT_EQ(getDirectories(), Names{"a.ctf"});
}

TEST_F(DirectoryListingTest, sortsByUnsignedBytes)
{
    const Names files = {" .ctf", "Z.ctf",   "a b.ctf",      "a.ctf",   "a2.ctf",
                         "b.ctf", "b10.ctf", "\xC3\xA9.ctf", "\xFF.ctf"};
    for (auto name = files.rbegin(); name != files.rend(); ++name)
        write(*name);
    const Names directories = {"A", "B", "a", "\xE7\x94\xBB\xE5\x83\x8F"};
    for (auto name = directories.rbegin(); name != directories.rend(); ++name)
        makeDirectory(*name);
    EXPECT_EQ(getFiles(), files);
    EXPECT_EQ(getDirectories(), directories);
}

TEST_F(DirectoryListingTest, followsLinks)
{
    m_root.write("elsewhere/a.ctf");
    fs::create_symlink(m_root.getPath("elsewhere/a.ctf"), m_path + "/b.ctf");
    fs::create_symlink(m_root.getPath("elsewhere/a.ctf"), m_path + "/c.txt");
    fs::create_directory_symlink("../elsewhere", m_path + "/d");
    EXPECT_EQ(getFiles(), Names{"b.ctf"});
    EXPECT_EQ(getDirectories(), Names{"d"});
    fs::create_directory_symlink(m_path, m_root.getPath("link"));
    m_listing.setPath(m_root.getPath("link"));
    EXPECT_EQ(getFiles(), Names{"b.ctf"});
}

TEST_F(DirectoryListingTest, skipsWhatIsNeitherDirectoryNorFile)
{
    fs::create_symlink("missing.ctf", m_path + "/dangling.ctf");
    fs::create_symlink("loop.ctf", m_path + "/loop.ctf");
    ASSERT_EQ(::mkfifo((m_path + "/pipe.ctf").c_str(), 0600), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string socketPath = m_path + "/socket.ctf";
    ASSERT_LT(socketPath.size(), sizeof address.sun_path);
    socketPath.copy(address.sun_path, socketPath.size());
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    write("a.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
    EXPECT_EQ(getDirectories(), Names());
}

TEST_F(DirectoryListingTest, readsAgainWhenTheTimeOfTheDirectoryHasChanged)
{
    const fs::file_time_type time = fs::file_time_type::clock::now();
    changeAt(time, "a.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
    changeAt(time, "b.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"}); // the time alone decides
    changeAt(time - 1h, "c.ctf");
    EXPECT_EQ(getFiles(), (Names{"a.ctf", "b.ctf", "c.ctf"})); // an earlier time is another one as well
}

TEST_F(DirectoryListingTest, seesTwoChangesWithinASecond)
{
    const auto second = std::chrono::floor<std::chrono::seconds>(fs::file_time_type::clock::now());
    changeAt(second + 500ms, "a.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
    changeAt(second + 501ms, "b.ctf");
    EXPECT_EQ(getFiles(), (Names{"a.ctf", "b.ctf"}));
}

TEST_F(DirectoryListingTest, changesBelowASubDirectoryOrInAFileAreNotThoseOfTheDirectory)
{
    write("a.ctf");
    write("below/b.ctf");
    const auto content = m_listing.getContent();
    write("below/c.ctf");
    m_root.write("transforms/a.ctf", "longer");
    EXPECT_EQ(m_listing.getContent(), content);
}

TEST_F(DirectoryListingTest, whatACallerHoldsStays)
{
    write("a.ctf");
    const auto content = m_listing.getContent();
    changeAt(content->time + 1s, "b.ctf");
    EXPECT_EQ(getFiles(), (Names{"a.ctf", "b.ctf"}));
    EXPECT_EQ(content->files, Names{"a.ctf"});
}

TEST_F(DirectoryListingTest, otherSeparatorsAreTheSamePath)
{
    write("a.ctf");
    const auto content = m_listing.getContent();
    std::string path = m_path;
    std::replace(path.begin(), path.end(), '/', '\\');
    m_listing.setPath(path);
    EXPECT_EQ(m_listing.getContent(), content);
}

TEST_F(DirectoryListingTest, otherPathForgetsWhatWasRead)
{
    write("a.ctf");
    const auto content = m_listing.getContent();
    m_root.write("Transforms/b.ctf");
    fs::last_write_time(m_root.getPath("Transforms"), content->time);
    m_listing.setPath(m_root.getPath("Transforms")); // another case is another path
    EXPECT_EQ(getFiles(), Names{"b.ctf"});
    m_listing.setPath(m_path + "/");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
}

TEST_F(DirectoryListingTest, failsWhereThereIsNothing)
{
    const std::string missing = m_root.getPath("missing");
    for (const std::string& path : {missing, m_root.write("a.ctf") + "/below", std::string()}) {
        m_listing.setPath(path);
        EXPECT_EQ(getFailure(), failure(0x6020001, "Path not found: '" + path + "'"));
    }
    fs::create_symlink("nothing", missing);
    m_listing.setPath(missing);
    EXPECT_EQ(getFailure(), failure(0x6020001, "Path not found: '" + missing + "'"));
}

TEST_F(DirectoryListingTest, newListingHasNoPath)
{
    m_listing = DirectoryListing();
    EXPECT_EQ(getFailure(), failure(0x6020001, "Path not found: ''"));
}

TEST_F(DirectoryListingTest, failsForWhatIsNoDirectory)
{
    const std::string path = m_root.write("a 'b' \xC3\xA9 %1$s.ctf");
    m_listing.setPath(path);
    EXPECT_EQ(getFailure(), failure(0x6020002, "Path is not a directory: '" + path + "'"));
}

TEST_F(DirectoryListingTest, failsWhenTheDirectoryCannotBeRead)
{
    write("a.ctf");
    fs::permissions(m_path, fs::perms::owner_exec);
    const WithoutPrivileges withoutPrivileges;
    EXPECT_EQ(getFailure(), failure(0x6020003, "Read error: '" + m_path + "'"));
    EXPECT_EQ(getFailure(), failure(0x6020003, "Read error: '" + m_path + "'"));
    fs::permissions(m_path, fs::perms::owner_all);
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
}

TEST_F(DirectoryListingTest, readsAgainAfterAFailureThatATimeDoesNotShow)
{
    write("a.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
    fs::rename(m_path, m_path + "2");
    EXPECT_EQ(getFailure(), failure(0x6020001, "Path not found: '" + m_path + "'"));
    EXPECT_EQ(getFailure(), failure(0x6020001, "Path not found: '" + m_path + "'"));
    fs::rename(m_path + "2", m_path); // which leaves the directory's own time
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
}

TEST_F(DirectoryListingTest, readsAPathThatHasAppeared)
{
    const std::string path = m_root.getPath("later/x");
    m_listing.setPath(path);
    EXPECT_EQ(getFailure(), failure(0x6020001, "Path not found: '" + path + "'"));
    m_root.write("later/x");
    EXPECT_EQ(getFailure(), failure(0x6020002, "Path is not a directory: '" + path + "'"));
    fs::remove(path);
    m_root.write("later/x/a.ctf");
    EXPECT_EQ(getFiles(), Names{"a.ctf"});
}

TEST_F(DirectoryListingTest, reportsOtherFailuresOfTheFileSystem)
{
    fs::create_symlink("loop", m_root.getPath("loop"));
    const std::string paths[] = {m_root.getPath("loop"), m_root.getPath(std::string(300, 'n'))};
    const char* reasons[] = {"Too many levels of symbolic links", "File name too long"};
    for (int i = 0; i < 2; ++i) {
        m_listing.setPath(paths[i]);
        const std::string message = "Filesystem error for '" + paths[i] + "': 'filesystem error: status: ";
        EXPECT_EQ(getFailure(), failure(0x3060004, message + reasons[i] + " [" + paths[i] + "]"));
    }
}

TEST_F(DirectoryListingTest, failsBelowADirectoryThatCannotBeSearched)
{
    makeDirectory("below");
    m_listing.setPath(m_path + "/below");
    EXPECT_EQ(getFiles(), Names());
    fs::permissions(m_path, fs::perms::owner_read);
    {
        const WithoutPrivileges withoutPrivileges;
        EXPECT_EQ(getFailure(), failure(0x3060004, "Filesystem error for '" + m_path +
                                                       "/below': 'filesystem error: status: Permission denied [" +
                                                       m_path + "/below]"));
    }
    fs::permissions(m_path, fs::perms::owner_all);
    EXPECT_EQ(getFiles(), Names());
}

TEST_F(DirectoryListingTest, copyIsIndependent)
{
    write("a.ctf");
    const auto content = m_listing.getContent();
    DirectoryListing copy = m_listing;
    m_listing.setPath(m_root.getPath("missing"));
    EXPECT_EQ(getFailure().id, 0x6020001U);
    EXPECT_EQ(copy.getContent(), content);
}
