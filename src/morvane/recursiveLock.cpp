#include "morvane/recursiveLock.h"

namespace Morvane_2015_1_42::Impl {

void RecursiveLock::lock()
{
    // No other thread can make the owner this one or end its being so: a stale value is not this thread either.
    const std::thread::id self = std::this_thread::get_id();
    if (m_owner.load(std::memory_order_relaxed) != self) {
        m_mutex.lock();
        m_owner.store(self, std::memory_order_relaxed);
    }
    ++m_depth;
}

void RecursiveLock::unlock()
{
    if (--m_depth > 0) return;
    m_owner.store(std::thread::id(), std::memory_order_relaxed);
    m_mutex.unlock();
}

} // namespace Morvane_2015_1_42::Impl
