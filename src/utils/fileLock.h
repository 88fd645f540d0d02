#pragma once

#include <boost/interprocess/sync/file_lock.hpp>
#include <optional>
#include <string>

namespace Color {

/// While it lives, no other process holds the lock of this file; the end of a process, however it comes, ends its
/// locks. Threads of one process do not exclude each other, and the first lock of several on one file that ends, ends
/// them all.
///
/// The lock is held on a file beside it, which has ".lock" added to its name and is never deleted. Where that file
/// cannot be made there is no lock.
class FileLock
{
public:
    /// Waits for the lock. An empty path makes no lock. Throws boost::interprocess::interprocess_exception when the
    /// lock file is there and cannot be opened for reading and writing.
    explicit FileLock(const std::string& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

private:
    std::string m_lockName;
    std::optional<boost::interprocess::file_lock> m_lock; ///< none when there is no lock
};

} // namespace Color
