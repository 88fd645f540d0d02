#include "morvane/aliasWatch.h"

#include "morvane/morvanePrefs.h"
#include "transform/referenceOp.h"

namespace Morvane_2015_1_42::Impl {

namespace {

/// Takes the alias that is looked up: of those that stand for a choice, the one that was chosen.
void collectAliases(const Color::OpList& ops, std::set<std::string>& aliases)
{
    for (std::size_t i = 0; i < ops.size(); ++i) {
        const auto* reference = dynamic_cast<const Color::ReferenceOp*>(ops.get(i));
        if (!reference) continue;
        if (!reference->getResolvedAlias().empty()) aliases.insert(reference->getResolvedAlias());
        if (const Color::OpList* referenced = reference->getReferencedOps()) collectAliases(*referenced, aliases);
    }
}

} // namespace

AliasWatch::~AliasWatch()
{
    if (!m_preferences) return;
    const auto lock = m_preferences->lockObservers();
    for (const std::string& alias : m_aliases)
        m_preferences->removeObserver(alias, &m_observer);
}

void AliasWatch::watch(const Color::OpList& ops)
{
    std::set<std::string> wanted;
    collectAliases(ops, wanted);
    if (wanted.empty() && !m_preferences) return;
    if (!m_preferences) m_preferences = &MorvanePrefs::getInstance();
    const auto lock = m_preferences->lockObservers();
    for (const std::string& alias : wanted) {
        if (m_aliases.count(alias) != 0) continue;
        m_preferences->addObserver(alias, &m_observer);
        m_aliases.insert(alias);
    }
    for (auto it = m_aliases.begin(); it != m_aliases.end();) {
        if (wanted.count(*it) != 0) {
            ++it;
            continue;
        }
        m_preferences->removeObserver(*it, &m_observer);
        it = m_aliases.erase(it);
    }
}

} // namespace Morvane_2015_1_42::Impl
