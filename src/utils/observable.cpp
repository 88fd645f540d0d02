#include "utils/observable.h"

#include "utils/exception.h"

namespace Color {

Observer::~Observer() = default;

void Observable::add(Observer* observer)
{
    if (observer) m_observers.insert(observer);
}

void Observable::remove(Observer* observer)
{
    if (observer && m_observers.erase(observer) == 0)
        raise(LogCategory::UTILS_PREFERENCES, ErrorIds::OBSERVER_NOT_FOUND);
}

void Observable::notifyAll() const
{
    // An observer may remove itself or others while it is told, so the next one is looked up afresh.
    auto next = m_observers.begin();
    while (next != m_observers.end()) {
        Observer* const observer = *next;
        observer->notify();
        next = m_observers.upper_bound(observer);
    }
}

} // namespace Color
