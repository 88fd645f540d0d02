#include "utils/fileLock.h"

#include "tests/utils/childProcess.h"
#include "tests/utils/logRecorder.h"
#include "tests/xml/temporaryDirectory.h"
#include "tests/xml/withoutPrivileges.h"

#include <boost/filesystem/path.hpp>
#include <boost/interprocess/exceptions.hpp>
#include <chrono>
#include <csignal>
#include <optional>
#include <thread>

using Color::FileLock;

namespace {

namespace fs = boost::filesystem;

/// Whether some other process holds the lock of the file.
bool isHeldElsewhere(const std::string& path)
{
    boost::interprocess::file_lock lock((path + ".lock").c_str());
    return !lock.try_lock();
}

/// A process that holds the lock of the file until it is killed.
class Holder
{
public:
    explicit Holder(const std::string& path)
        : m_process([&] {
              const FileLock lock(path);
              m_isHeld.send();
              ::pause();
          })
    {
        m_isHeld.await();
    }

    void kill() { m_process.kill(); }

private:
    ProcessSignal m_isHeld;
    ChildProcess m_process;
};

} // namespace

TEST(FileLock, leavesAnEmptyFileBesideTheOneThatIsLocked)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("a.xml");
    {
        const FileLock lock(path);
    }
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(fs::file_size(path + ".lock"), 0u);
}

TEST(FileLock, leavesWhatIsInTheLockFile)
{
    const TemporaryDirectory directory;
    const std::string lockFile = directory.write("a.xml.lock", "kept");
    {
        const FileLock lock(directory.getPath("a.xml"));
    }
    EXPECT_EQ(fs::file_size(lockFile), 4u);
}

TEST(FileLock, excludesOtherProcesses)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("a.xml");
    std::optional<FileLock> lock(path);
    EXPECT_TRUE(ChildProcess([&] { EXPECT_TRUE(isHeldElsewhere(path)); }).succeeds());
    lock.reset();
    EXPECT_TRUE(ChildProcess([&] { EXPECT_FALSE(isHeldElsewhere(path)); }).succeeds());
}

TEST(FileLock, waitsUntilItIsFree)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("a.xml");
    Holder holder(path);
    ProcessSignal waits;
    ChildProcess waiter([&] {
        waits.send();
        const FileLock lock(path);
        EXPECT_TRUE(fs::exists(directory.getPath("freed")));
    });
    waits.await();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    directory.write("freed");
    holder.kill();
    EXPECT_TRUE(waiter.succeeds());
}

TEST(FileLock, endsWithTheProcessThatHeldIt)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("a.xml");
    Holder holder(path);
    EXPECT_TRUE(isHeldElsewhere(path));
    holder.kill();
    EXPECT_FALSE(isHeldElsewhere(path));
    const FileLock lock(path);
    EXPECT_TRUE(ChildProcess([&] { EXPECT_TRUE(isHeldElsewhere(path)); }).succeeds());
}

TEST(FileLock, waitsOnThroughSignals)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("a.xml");
    Holder holder(path);
    ProcessSignal waits;
    ProcessSignal isInterrupted;
    static ProcessSignal* interrupted = nullptr;
    interrupted = &isInterrupted;
    ChildProcess waiter([&] {
        struct sigaction action = {};
        action.sa_handler = [](int) { interrupted->send(); };
        ::sigaction(SIGUSR1, &action, nullptr); // without SA_RESTART
        waits.send();
        const FileLock lock(path);
        EXPECT_TRUE(ChildProcess([&] { EXPECT_TRUE(isHeldElsewhere(path)); }).succeeds());
    });
    waits.await();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    waiter.signal(SIGUSR1);
    isInterrupted.await();
    holder.kill();
    EXPECT_TRUE(waiter.succeeds());
}

TEST(FileLock, thereIsNoneForAnEmptyPath)
{
    const TemporaryDirectory directory;
    const fs::path former = fs::current_path();
    fs::current_path(directory.getPath(""));
    {
        const FileLock lock("");
        EXPECT_TRUE(fs::is_empty("."));
    }
    fs::current_path(former);
}

TEST(FileLock, thereIsNoneWhereItsFileCannotBeMade)
{
    const TemporaryDirectory directory;
    {
        const FileLock lock(directory.getPath("missing/a.xml"));
    }
    EXPECT_FALSE(fs::exists(directory.getPath("missing")));

    const std::string readOnly = directory.getPath("readOnly");
    fs::create_directory(readOnly);
    fs::permissions(readOnly, fs::owner_read | fs::owner_exe);
    {
        const WithoutPrivileges scope;
        const FileLock lock(readOnly + "/a.xml");
        EXPECT_FALSE(fs::exists(readOnly + "/a.xml.lock"));
    }
    fs::permissions(readOnly, fs::owner_all);
}

TEST(FileLock, aFileThatCanOnlyBeAppendedToIsAnException)
{
    const TemporaryDirectory directory;
    const std::string lockFile = directory.write("a.xml.lock");
    fs::permissions(lockFile, fs::owner_write);
    const WithoutPrivileges scope;
    EXPECT_THROW(FileLock(directory.getPath("a.xml")), boost::interprocess::interprocess_exception);
}

TEST(FileLock, aFailureToUnlockIsLogged)
{
    const TemporaryDirectory directory;
    const std::string lockFile = directory.getPath("a.xml.lock");
    const LogRecorder log;
    {
        const FileLock lock(directory.getPath("a.xml"));
        // Takes the file away from under the lock.
        for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
            boost::system::error_code ignored;
            if (fs::read_symlink(entry.path(), ignored) == lockFile) {
                ::close(std::stoi(entry.path().filename().string()));
                break;
            }
        }
    }
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_EQ(log.lines()[0].first, Color::LOG_LEVEL_DEBUG);
    // Both rows of the id say "get".
    EXPECT_EQ(log.lines()[0].second,
              "COLOR:UTILS:ALL: Could not get lock on file " + lockFile + ": Bad file descriptor.");
}
