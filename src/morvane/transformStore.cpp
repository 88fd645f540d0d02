#include "morvane/transformStore.h"

#include "morvane/transformImpl.h"
#include "utils/exception.h"

#include <algorithm>
#include <iterator>
#include <mutex>

namespace Morvane_2015_1_42::Impl {

namespace LogCategory = Color::LogCategory;
namespace ErrorIds = Color::ErrorIds;

using Guard = std::lock_guard<RecursiveLock>;

TransformStore::TransformStore() = default;
TransformStore::~TransformStore() = default;

TransformStore& TransformStore::getInstance()
{
    static TransformStore& instance = *new TransformStore;
    return instance;
}

void TransformStore::clear()
{
    // They are let go without the lock: a host's adaptor may be destroyed with them, and do whatever it likes.
    Entries former;
    const Guard guard(m_lock);
    former.swap(m_entries);
}

std::size_t TransformStore::size() const
{
    const Guard guard(m_lock);
    return m_entries.size();
}

std::vector<TransformStore::Item> TransformStore::getItems() const
{
    const Guard guard(m_lock);
    std::vector<Item> items;
    items.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
        items.push_back({entry.id, entry.forms.front().handle});
    return items;
}

void TransformStore::add(const TransformPtr& transform)
{
    const Guard guard(m_lock);
    const bool isNew =
        m_entries.push_back({transform->getId(), transform->getUniqueId(), {{transform, Transform::of(transform)}}})
            .second;
    if (!isNew) Color::raise(LogCategory::MORVANE_CACHE, ErrorIds::CACHE_DUPLICATE_ID, transform->getId());
}

bool TransformStore::find(const std::string& id, TransformPtr& result) const
{
    const Guard guard(m_lock);
    const auto& byId = m_entries.get<ById>();
    const auto found = byId.find(id);
    if (found == byId.end()) return false;
    result = found->forms.front().handle;
    return true;
}

void TransformStore::remove(const std::string& id)
{
    std::vector<Form> former; // let go without the lock, as in clear()
    const Guard guard(m_lock);
    auto& byId = m_entries.get<ById>();
    const auto found = byId.find(id);
    if (found == byId.end()) Color::raise(LogCategory::MORVANE_CACHE, ErrorIds::CACHE_ID_NOT_FOUND, id);
    former.swap(found->forms);
    byId.erase(found);
}

bool TransformStore::holds(const Transform& transform) const
{
    const Guard guard(m_lock);
    return findEntryOf(transform) != nullptr;
}

bool TransformStore::findForm(const Transform& transform, const FinalizeSettings& settings, TransformPtr& result) const
{
    const Guard guard(m_lock);
    const Entry* entry = findEntryOf(transform);
    const Form* form = entry ? findFormIn(*entry, settings) : nullptr;
    if (!form) return false;
    result = form->handle;
    return true;
}

void TransformStore::addForm(const TransformPtr& form, const FinalizeSettings& settings)
{
    const Guard guard(m_lock);
    const Transform* transform = Transform::of(form);
    const Entry* entry = findEntryOf(*transform);
    if (!entry) Color::raise(LogCategory::MORVANE_CACHE, ErrorIds::CACHE_ID_NOT_FOUND, form->getId());
    if (findFormIn(*entry, settings)) {
        Color::raise(LogCategory::MORVANE_CACHE, ErrorIds::CACHE_DUPLICATE_ID, form->getId());
    }
    entry->forms.push_back({form, transform});
}

const TransformStore::Entry* TransformStore::findEntryOf(const Transform& transform) const
{
    const std::string uniqueId = transform.getUniqueId();
    const auto [begin, end] = m_entries.get<ByUniqueId>().equal_range(uniqueId);
    if (begin == end) return nullptr;
    if (std::next(begin) == end && !uniqueId.empty()) return &*begin;
    // Ids that differ in no letter or digit have one unique id, "look 1.1" and "look 11" for example. The one with the
    // very id is meant then, or else the first. Without letters and digits there is no unique id to go by.
    const auto sameId = std::find_if(begin, end, [&](const Entry& entry) { return entry.id == transform.getId(); });
    if (sameId != end) return &*sameId;
    if (uniqueId.empty()) return nullptr;
    return &*std::find_if(m_entries.begin(), m_entries.end(),
                          [&](const Entry& entry) { return entry.uniqueId == uniqueId; });
}

const TransformStore::Form* TransformStore::findFormIn(const Entry& entry, const FinalizeSettings& settings)
{
    const auto found = std::find_if(entry.forms.begin(), entry.forms.end(), [&](const Form& form) {
        return form.transform->isFinalizedWith(settings.in, settings.out, settings.renderers, settings.optimizer,
                                               settings.resolve);
    });
    return found == entry.forms.end() ? nullptr : &*found;
}

} // namespace Morvane_2015_1_42::Impl
