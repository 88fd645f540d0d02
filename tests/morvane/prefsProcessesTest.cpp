#include "morvane/morvanePrefs.h"

#include "tests/utils/childProcess.h"
#include "tests/xml/temporaryDirectory.h"

#include <gtest/gtest.h>
#include <list>

/// Several real processes share a config file.

using Color::Preferences;
using Morvane_2015_1_42::BASE_PATH_SHARED;
using Morvane_2015_1_42::Impl::MorvanePrefs;

namespace {

constexpr int kWorkers = 4;
constexpr int kSaves = 40;

std::string noProfile() { return {}; }

std::string aliasOf(int worker, int save)
{
    return "w" + std::to_string(worker) + " <\"" + std::to_string(save) + "\">";
}

/// Long enough that a file takes several writes.
std::string pathOf(int worker, int save)
{
    return "/" + std::string(300, static_cast<char>('a' + worker)) + std::to_string(save);
}

/// Expects what any moment may find: of each worker the first few aliases, whole, and beyond those the five that there
/// always are. Returns how many there are of the workers.
int checkWhole(const Preferences& preferences)
{
    int count = 0;
    for (int worker = 0; worker < kWorkers; ++worker) {
        bool isOver = false;
        for (int save = 0; save < kSaves; ++save) {
            const auto found = preferences.getAliases().find(aliasOf(worker, save));
            const bool isThere = found != preferences.getAliases().end();
            EXPECT_FALSE(isThere && isOver);
            isOver = !isThere;
            if (!isThere) continue;
            EXPECT_EQ(found->second, (Color::AliasEntry{pathOf(worker, save), BASE_PATH_SHARED}));
            ++count;
        }
    }
    EXPECT_EQ(preferences.getAliases().size(), 5u + static_cast<std::size_t>(count));
    EXPECT_EQ(preferences.getSharedHome(), "/site");
    return count;
}

Preferences readAnew(const std::string& path) { return MorvanePrefs(path, noProfile).get(); }

/// Saves one alias after the other; is killed when it has saved this many, unless that is all.
void work(const std::string& path, int worker, int savesToLive)
{
    MorvanePrefs preferences(path, noProfile);
    for (int save = 0; save < kSaves; ++save) {
        if (save == savesToLive) ::kill(::getpid(), SIGKILL);
        preferences.setAlias(aliasOf(worker, save), pathOf(worker, save), BASE_PATH_SHARED);
    }
}

} // namespace

TEST(PrefsProcesses, nobodySeesOrLeavesHalfAFile)
{
    const TemporaryDirectory directory;
    const std::string path =
        directory.write("morvaneConfig.xml", "<MorvaneConfig><SharedHome dir='/site'/></MorvaneConfig>\n");

    ChildProcess reader([&] {
        for (int reads = 0; reads < 300; ++reads)
            checkWhole(readAnew(path));
    });
    std::list<ChildProcess> workers;
    for (int worker = 0; worker < kWorkers; ++worker) {
        // Every other one does not come to its end.
        const int savesToLive = worker % 2 == 0 ? kSaves : 7 * worker;
        workers.emplace_back([&] { work(path, worker, savesToLive); });
    }
    int worker = 0;
    for (ChildProcess& process : workers)
        EXPECT_TRUE(worker++ % 2 == 0 ? process.succeeds() : process.isKilled());
    EXPECT_TRUE(reader.succeeds());

    EXPECT_GT(checkWhole(readAnew(path)), 0);
}

TEST(PrefsProcesses, theLastSaveIsWhatOneProcessKnew)
{
    const TemporaryDirectory directory;
    const std::string path =
        directory.write("morvaneConfig.xml", "<MorvaneConfig><SharedHome dir='/site'/></MorvaneConfig>\n");
    ProcessSignal isLoaded;
    ProcessSignal go;
    std::list<ChildProcess> workers;
    for (int worker = 0; worker < kWorkers; ++worker) {
        workers.emplace_back([&, worker] {
            MorvanePrefs preferences(path, noProfile);
            isLoaded.send();
            go.await();
            for (int save = 0; save < kSaves; ++save)
                preferences.setAlias(aliasOf(worker, save), pathOf(worker, save), BASE_PATH_SHARED);
        });
    }
    for (int worker = 0; worker < kWorkers; ++worker)
        isLoaded.await();
    for (int worker = 0; worker < kWorkers; ++worker)
        go.send();
    for (ChildProcess& process : workers)
        EXPECT_TRUE(process.succeeds());

    // None of them had read what another saved, so the aliases of exactly one are there, and all of them.
    const Preferences preferences = readAnew(path);
    EXPECT_EQ(checkWhole(preferences), kSaves);
    int owners = 0;
    for (int worker = 0; worker < kWorkers; ++worker)
        owners += preferences.getAliases().count(aliasOf(worker, kSaves - 1)) > 0 ? 1 : 0;
    EXPECT_EQ(owners, 1);
}
