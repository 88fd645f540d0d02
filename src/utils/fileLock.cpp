#include "utils/fileLock.h"

#include "utils/exception.h"

#include <cerrno>
#include <fstream>

namespace Color {

namespace {

using boost::interprocess::interprocess_exception;

/// A signal that the host handles ends the wait as if it had failed.
void waitFor(boost::interprocess::file_lock& lock)
{
    for (;;) {
        try {
            return lock.lock();
        } catch (const interprocess_exception& exception) {
            if (exception.get_native_error() != EINTR) throw;
        }
    }
}

} // namespace

FileLock::FileLock(const std::string& path) : m_lockName(path + ".lock")
{
    if (path.empty()) return;
    // Makes the file. The stream must be closed before the lock is taken: closing a file drops its locks.
    if (!std::ofstream(m_lockName, std::ios::app)) return;
    m_lock.emplace(m_lockName.c_str());
    waitFor(*m_lock);
}

FileLock::~FileLock()
{
    if (!m_lock) return;
    try {
        m_lock->unlock();
    } catch (const interprocess_exception& exception) {
        logFailure(LogCategory::UTILS_ALL, ErrorIds::LOCK_RELEASE_FAILED, m_lockName, exception.what());
    }
}

} // namespace Color
