#pragma once

#include "transform/opList.h"
#include "utils/observable.h"

#include <set>
#include <string>

namespace Morvane_2015_1_42::Impl {

class MorvanePrefs;

/// Has an observer told when one of the aliases changes that a list of ops depends on, until the watch ends. It may
/// begin and end in another thread than the one that changes the aliases: its end waits while the observer is told.
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
    MorvanePrefs* m_preferences = nullptr; ///< null until there was an alias to watch
    std::set<std::string> m_aliases;       ///< changed under the preferences' lock, because being told changes it too
};

} // namespace Morvane_2015_1_42::Impl
