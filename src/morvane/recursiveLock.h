#pragma once

#include <atomic>
#include <boost/thread/mutex.hpp>
#include <thread>

namespace Morvane_2015_1_42::Impl {

/// A lock that its owner may take again, for std::lock_guard and its kin. It is free once it was given back as often as
/// it was taken.
class RecursiveLock
{
public:
    RecursiveLock() = default;
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

    /// Waits until no other thread has it.
    void lock();
    /// For the owner alone.
    void unlock();

private:
    boost::mutex m_mutex;
    std::atomic<std::thread::id> m_owner{}; ///< the id of no thread while the lock is free
    unsigned m_depth = 0;                   ///< how often the owner has it; nobody else reads this
};

} // namespace Morvane_2015_1_42::Impl
