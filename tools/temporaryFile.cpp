#include "temporaryFile.h"

#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <unistd.h>

namespace fs = std::filesystem;

namespace Command {

namespace {

/// What a signal handler may look at: a plain buffer, valid while the flag is set.
char pathToRemove[PATH_MAX];
volatile std::sig_atomic_t hasPathToRemove = 0;

extern "C" void removeAndEnd(int signalNumber)
{
    if (hasPathToRemove) unlink(pathToRemove);
    // The handler was installed with SA_RESETHAND: this ends the process as the signal would have.
    raise(signalNumber);
}

} // namespace

TemporaryFile::TemporaryFile(const std::string& finalPath)
{
    const fs::path target = fs::is_symlink(finalPath) ? fs::weakly_canonical(finalPath) : fs::path(finalPath);
    if (fs::exists(target) && !fs::is_regular_file(target)) throw std::runtime_error("it is not a regular file");
    const fs::path directory = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (!fs::is_directory(directory)) {
        throw std::runtime_error("the directory '" + directory.string() + "' does not exist");
    }
    m_finalPath = target.string();
    const std::string name = "." + target.stem().string() + ".morvane-" + std::to_string(getpid());
    m_path = (directory / (name + fs::path(finalPath).extension().string())).string();
    if (m_path.size() >= sizeof pathToRemove) throw std::runtime_error("its path is too long");
    std::memcpy(pathToRemove, m_path.c_str(), m_path.size() + 1);
    hasPathToRemove = 1;
}

TemporaryFile::~TemporaryFile()
{
    if (!m_path.empty()) unlink(m_path.c_str());
    hasPathToRemove = 0;
}

void TemporaryFile::commit()
{
    std::error_code error;
    const fs::file_status present = fs::status(m_finalPath, error);
    if (!error && fs::is_regular_file(present)) fs::permissions(m_path, present.permissions(), error);
    fs::rename(m_path, m_finalPath, error);
    if (error) throw std::runtime_error(error.message());
    hasPathToRemove = 0;
    m_path.clear();
}

void installSignalHandlers()
{
    struct sigaction action = {};
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction present = {};
        // A signal that the caller ignores (as nohup does) stays ignored.
        if (sigaction(signalNumber, nullptr, &present) == 0 && present.sa_handler == SIG_IGN) continue;
        sigaction(signalNumber, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace Command
