#pragma once

#include <set>

namespace Color {

/// Is told when something that it watches has changed.
class Observer
{
public:
    virtual ~Observer();
    virtual void notify() = 0;
};

/// Keeps the observers of one thing. Does not own them.
class Observable
{
public:
    void add(Observer* observer);
    /// Throws 0x1020006 when the observer is not there; null does nothing.
    void remove(Observer* observer);
    void notifyAll() const;
    bool empty() const { return m_observers.empty(); }

private:
    std::set<Observer*> m_observers;
};

} // namespace Color
