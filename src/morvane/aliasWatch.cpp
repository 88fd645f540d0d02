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
    for (const std::string& alias : m_aliases)
        MorvanePrefs::getInstance().removeObserver(alias, &m_observer);
}

void AliasWatch::watch(const Color::OpList& ops)
{
    std::set<std::string> wanted;
    collectAliases(ops, wanted);
    for (const std::string& alias : wanted) {
        if (m_aliases.count(alias) != 0) continue;
        MorvanePrefs::getInstance().addObserver(alias, &m_observer);
        m_aliases.insert(alias);
    }
    for (auto it = m_aliases.begin(); it != m_aliases.end();) {
        if (wanted.count(*it) != 0) {
            ++it;
            continue;
        }
        MorvanePrefs::getInstance().removeObserver(*it, &m_observer);
        it = m_aliases.erase(it);
    }
}

} // namespace Morvane_2015_1_42::Impl
