#pragma once

#include "transform/opList.h"
#include "utils/observable.h"

#include <set>
#include <string>

namespace Morvane_2015_1_42::Impl {

/// Has an observer told when one of the aliases changes that a list of ops depends on, until the watch ends.
class AliasWatch
{
public:
    /// Watches nothing yet. The observer must outlive the watch.
    explicit AliasWatch(Color::Observer& observer) : m_observer(observer) {}
    AliasWatch(const AliasWatch&) = delete;
    AliasWatch& operator=(const AliasWatch&) = delete;
    ~AliasWatch();

    /// Watches the aliases of these ops from now on, those of references in resolved references included, and no
    /// others. What fails when the preferences of the process cannot be loaded passes through; without aliases they
    /// are not needed.
    void watch(const Color::OpList& ops);

private:
    Color::Observer& m_observer;
    std::set<std::string> m_aliases;
};

} // namespace Morvane_2015_1_42::Impl
