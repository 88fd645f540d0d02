#include "tests/api/hostTools.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

using namespace Morvane;

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

class NameList : public TransformPathMonitor::Callback
{
public:
    void onEntry(const char* name) override { m_names.emplace_back(name); }

    const Names& getNames() const { return m_names; }

private:
    Names m_names;
};

/// A monitor of a directory that is gone at the end of the test.
class TransformPathMonitorTest : public ::testing::Test
{
protected:
    TransformPathMonitorTest() { fs::create_directories(m_root); }
    ~TransformPathMonitorTest() override { fs::remove_all(m_root); }

    std::string path(const std::string& name) const { return (m_root / name).string(); }

    /// Writes a file, with the directories on the way to it.
    void write(const std::string& name) const
    {
        fs::create_directories((m_root / name).parent_path());
        std::ofstream(m_root / name) << "content";
    }

    static Names filesOf(TransformPathMonitor& monitor, const char* relative)
    {
        NameList list;
        EXPECT_TRUE(succeeds(monitor.listFiles(relative, list)));
        return list.getNames();
    }

    static Names directoriesOf(TransformPathMonitor& monitor, const char* relative)
    {
        NameList list;
        EXPECT_TRUE(succeeds(monitor.listDirectories(relative, list)));
        return list.getNames();
    }

    const fs::path m_root = fs::temp_directory_path() / ("morvaneMonitor" + std::to_string(::getpid()));
    TransformPathMonitor m_monitor{m_root.c_str()};
};

} // namespace

TEST_F(TransformPathMonitorTest, listsDirectoriesAndFiles)
{
    for (const char* name : {"b.ctf", "a.CDL", "readme.txt", "looks/day.ctf",
                             "looks/n\xC3\xA4"
                             "chts.cc",
                             "looks/old ones/x.ctf"}) {
        write(name);
    }
    EXPECT_EQ(directoriesOf(m_monitor, ""), Names{"looks"});
    EXPECT_EQ(filesOf(m_monitor, ""), (Names{"a.CDL", "b.ctf"}));
    EXPECT_EQ(directoriesOf(m_monitor, "looks"), Names{"old ones"});
    EXPECT_EQ(filesOf(m_monitor, "looks"), (Names{"day.ctf", "n\xC3\xA4"
                                                             "chts.cc"}));
    EXPECT_EQ(directoriesOf(m_monitor, "looks/old ones"), Names());
    EXPECT_EQ(filesOf(m_monitor, "looks/old ones"), Names{"x.ctf"});
}

TEST_F(TransformPathMonitorTest, seesChanges)
{
    write("a.ctf");
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"a.ctf"});
    const fs::file_time_type time = fs::last_write_time(m_root);
    write("b.ctf");
    fs::remove(m_root / "a.ctf");
    fs::last_write_time(m_root, time + std::chrono::seconds(1));
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"b.ctf"});
}

TEST_F(TransformPathMonitorTest, failuresSayWhyAndTellNoName)
{
    write("a.ctf");
    NameList list;
    EXPECT_TRUE(
        failsWith(m_monitor.listFiles("missing", list), 0x6020001, "Path not found: '" + path("missing") + "'"));
    EXPECT_TRUE(
        failsWith(m_monitor.listDirectories("missing", list), 0x6020001, "Path not found: '" + path("missing") + "'"));
    EXPECT_TRUE(
        failsWith(m_monitor.listFiles("a.ctf", list), 0x6020002, "Path is not a directory: '" + path("a.ctf") + "'"));
    EXPECT_TRUE(failsWith(m_monitor.listDirectories("a.ctf", list), 0x6020002,
                          "Path is not a directory: '" + path("a.ctf") + "'"));
    EXPECT_EQ(list.getNames(), Names());
}

TEST_F(TransformPathMonitorTest, pathMayAppearLater)
{
    NameList list;
    EXPECT_FALSE(m_monitor.listDirectories("looks", list));
    write("looks/night/a.ctf");
    EXPECT_EQ(directoriesOf(m_monitor, "looks"), Names{"night"});
}

TEST_F(TransformPathMonitorTest, nullIsNoPath)
{
    NameList list;
    EXPECT_TRUE(failsWith(m_monitor.setPath(nullptr), 0x6020004, "Invalid parameter"));
    EXPECT_EQ(m_monitor.getPath(), m_root.string());
    EXPECT_TRUE(failsWith(m_monitor.listFiles(nullptr, list), 0x6020004, "Invalid parameter"));
    EXPECT_TRUE(failsWith(m_monitor.listDirectories(nullptr, list), 0x6020004, "Invalid parameter"));
    TransformPathMonitor monitor(nullptr);
    EXPECT_STREQ(monitor.getPath(), "");
    EXPECT_TRUE(failsWith(monitor.listFiles("", list), 0x6020001, "Path not found: ''"));
}

TEST_F(TransformPathMonitorTest, rootMayChange)
{
    write("one/a.ctf");
    write("two/b.ctf");
    EXPECT_TRUE(succeeds(m_monitor.setPath(path("one").c_str())));
    EXPECT_EQ(m_monitor.getPath(), path("one"));
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"a.ctf"});
    EXPECT_TRUE(succeeds(m_monitor.setPath(path("two").c_str())));
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"b.ctf"});
    EXPECT_TRUE(succeeds(m_monitor.setPath("")));
    EXPECT_STREQ(m_monitor.getPath(), "");
}

TEST_F(TransformPathMonitorTest, settingTheRootReadsAnew)
{
    write("a.ctf");
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"a.ctf"});
    const fs::file_time_type time = fs::last_write_time(m_root);
    write("b.ctf");
    fs::last_write_time(m_root, time);
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"a.ctf"});
    EXPECT_TRUE(succeeds(m_monitor.setPath(m_monitor.getPath())));
    EXPECT_EQ(m_monitor.getPath(), m_root.string());
    EXPECT_EQ(filesOf(m_monitor, ""), (Names{"a.ctf", "b.ctf"}));
}

TEST_F(TransformPathMonitorTest, tellsTheFullPathOfAFile)
{
    char buffer[1024];
    EXPECT_TRUE(succeeds(m_monitor.getFileFullPath("looks", "missing.ctf", buffer, sizeof buffer)));
    EXPECT_EQ(buffer, path("looks/missing.ctf"));
    EXPECT_TRUE(succeeds(m_monitor.getFileFullPath("", "a.ctf", buffer, sizeof buffer)));
    EXPECT_EQ(buffer, path("a.ctf"));
}

TEST_F(TransformPathMonitorTest, cutsThePathToTheBuffer)
{
    EXPECT_TRUE(succeeds(m_monitor.setPath("/r")));
    const std::string full = "/r/s/a.ctf";
    for (unsigned length = 0; length < full.size() + 3; ++length) {
        // On the heap, with its end at the end of the block.
        const std::unique_ptr<char[]> buffer(new char[length + 1]);
        std::fill_n(buffer.get(), length + 1, '#');
        EXPECT_TRUE(succeeds(m_monitor.getFileFullPath("s", "a.ctf", buffer.get(), length)));
        EXPECT_EQ(buffer[length], '#') << length;
        if (length > 0) {
            EXPECT_EQ(buffer.get(), full.substr(0, length - 1));
        }
    }
}

TEST_F(TransformPathMonitorTest, fullPathNeedsAllPointers)
{
    char buffer[] = "before";
    EXPECT_TRUE(
        failsWith(m_monitor.getFileFullPath(nullptr, "a", buffer, sizeof buffer), 0x6020004, "Invalid parameter"));
    EXPECT_TRUE(
        failsWith(m_monitor.getFileFullPath("", nullptr, buffer, sizeof buffer), 0x6020004, "Invalid parameter"));
    EXPECT_TRUE(failsWith(m_monitor.getFileFullPath("", "a", nullptr, 0), 0x6020004, "Invalid parameter"));
    EXPECT_STREQ(buffer, "before");
}

TEST_F(TransformPathMonitorTest, copiesAreIndependent)
{
    write("a.ctf");
    write("other/b.ctf");
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"a.ctf"});
    TransformPathMonitor copy(m_monitor);
    EXPECT_TRUE(succeeds(m_monitor.setPath(path("other").c_str())));
    EXPECT_EQ(copy.getPath(), m_root.string());
    EXPECT_EQ(filesOf(copy, ""), Names{"a.ctf"});
    copy = m_monitor;
    EXPECT_EQ(copy.getPath(), path("other"));
    EXPECT_TRUE(succeeds(m_monitor.setPath("")));
    EXPECT_EQ(filesOf(copy, ""), Names{"b.ctf"});
    const TransformPathMonitor& self = copy;
    copy = self;
    EXPECT_EQ(filesOf(copy, ""), Names{"b.ctf"});
}

TEST_F(TransformPathMonitorTest, copyHasWhatWasRead)
{
    write("a.ctf");
    EXPECT_EQ(filesOf(m_monitor, ""), Names{"a.ctf"});
    TransformPathMonitor copy(m_monitor);
    const fs::file_time_type time = fs::last_write_time(m_root);
    write("b.ctf");
    fs::last_write_time(m_root, time);
    EXPECT_EQ(filesOf(copy, ""), Names{"a.ctf"});
}

TEST_F(TransformPathMonitorTest, hostsExceptionEndsTheWalkAndPassesThrough)
{
    struct Stop
    {};
    class StoppingCallback : public NameList
    {
    public:
        void onEntry(const char* name) override
        {
            NameList::onEntry(name);
            throw Stop();
        }
    };

    for (const char* name : {"a.ctf", "b.ctf", "c/x", "d/x"})
        write(name);
    StoppingCallback callback;
    EXPECT_THROW(m_monitor.listFiles("", callback), Stop);
    EXPECT_THROW(m_monitor.listDirectories("", callback), Stop);
    EXPECT_EQ(callback.getNames(), (Names{"a.ctf", "c"}));
    EXPECT_EQ(filesOf(m_monitor, ""), (Names{"a.ctf", "b.ctf"}));
}

TEST_F(TransformPathMonitorTest, callbackMayWalkDown)
{
    class Walker : public TransformPathMonitor::Callback
    {
    public:
        explicit Walker(TransformPathMonitor& monitor) : m_monitor(monitor) {}

        void onEntry(const char* name) override
        {
            const std::string above = m_relative;
            m_relative += std::string(m_relative.empty() ? "" : "/") + name;
            m_visited.push_back(m_relative);
            EXPECT_TRUE(succeeds(m_monitor.listDirectories(m_relative.c_str(), *this)));
            m_relative = above;
        }

        const Names& getVisited() const { return m_visited; }

    private:
        TransformPathMonitor& m_monitor;
        std::string m_relative;
        Names m_visited;
    };

    for (const char* name : {"a/b/c/x", "a/d/x", "e/f/x"})
        write(name);
    Walker walker(m_monitor);
    EXPECT_TRUE(succeeds(m_monitor.listDirectories("", walker)));
    EXPECT_EQ(walker.getVisited(), (Names{"a", "a/b", "a/b/c", "a/d", "e", "e/f"}));
}

TEST_F(TransformPathMonitorTest, walkGoesOnWhenTheCallbackChangesTheMonitor)
{
    class Changer : public NameList
    {
    public:
        explicit Changer(std::unique_ptr<TransformPathMonitor>& monitor) : m_monitor(monitor) {}

        void onEntry(const char* name) override
        {
            if (getNames().empty()) {
                EXPECT_TRUE(succeeds(m_monitor->setPath("elsewhere")));
            }
            if (getNames().size() == 1) m_monitor.reset();
            NameList::onEntry(name);
        }

    private:
        std::unique_ptr<TransformPathMonitor>& m_monitor;
    };

    for (const char* name : {"a.ctf", "b.ctf", "c.ctf"})
        write(name);
    auto monitor = std::make_unique<TransformPathMonitor>(m_root.c_str());
    Changer changer(monitor);
    EXPECT_TRUE(succeeds(monitor->listFiles("", changer)));
    EXPECT_EQ(changer.getNames(), (Names{"a.ctf", "b.ctf", "c.ctf"}));
}
