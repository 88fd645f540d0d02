#pragma once

#include "morvane/finalizeSettings.h"
#include "morvane/recursiveLock.h"
#include "morvane/transform.h"

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>
#include <string>
#include <vector>

namespace Morvane_2015_1_42::Impl {

class Transform;

/// Transforms by id with their finalized forms, in the order in which they were added; what is behind TransformCache.
///
/// Two texts lead to an entry, both read when it is added. The id, whatever it holds, is the entry's own: hosts and
/// serialized texts name it. The unique id is what finalize() has in common with the store: a host's transform is the
/// one of an entry when their unique ids are equal.
///
/// Each operation holds the lock of the store. None of them runs foreign code with the entries half changed.
class TransformStore
{
public:
    /// An entry without its forms.
    struct Item
    {
        std::string id;
        TransformPtr transform;
    };

    TransformStore();
    TransformStore(const TransformStore&) = delete;
    TransformStore& operator=(const TransformStore&) = delete;
    ~TransformStore();

    /// The one of this process. It is never destroyed, so that hosts may use it at any time.
    static TransformStore& getInstance();

    /// For whoever does several operations that belong together.
    RecursiveLock& getLock() const { return m_lock; }

    void clear();
    /// The number of entries.
    std::size_t size() const;
    /// All entries in order.
    std::vector<Item> getItems() const;

    /// Adds an entry with the id of the transform, which must be one of the library's own. Throws 0x6040003 when there
    /// is one.
    void add(const TransformPtr& transform);
    /// The transform of an entry as it was added. False, and the result as it was, when there is no such entry.
    bool find(const std::string& id, TransformPtr& result) const;
    /// Throws 0x6040001 when there is no such entry.
    void remove(const std::string& id);

    /// Whether a transform is the one of an entry.
    bool holds(const Transform& transform) const;
    /// The first in the transform's entry that is finalized with these values, the one that was added included. False,
    /// and the result as it was, when there is none. Transform may be what result is a handle to.
    bool findForm(const Transform& transform, const FinalizeSettings& settings, TransformPtr& result) const;
    /// Adds a form to its transform's entry. Throws 0x6040001 when there is no such entry, 0x6040003 when it has a form
    /// with these values.
    void addForm(const TransformPtr& form, const FinalizeSettings& settings);

private:
    struct Form
    {
        TransformPtr handle;
        const Transform* transform; ///< what the handle holds
    };
    struct Entry
    {
        std::string id;
        std::string uniqueId;
        /// The transform as it was added, and its finalized forms. No key: it changes in place.
        mutable std::vector<Form> forms;
    };
    struct ById
    {};
    struct ByUniqueId
    {};
    using Entries = boost::multi_index_container<
        Entry,
        boost::multi_index::indexed_by<
            boost::multi_index::sequenced<>,
            boost::multi_index::hashed_unique<boost::multi_index::tag<ById>,
                                              boost::multi_index::member<Entry, std::string, &Entry::id>>,
            boost::multi_index::hashed_non_unique<boost::multi_index::tag<ByUniqueId>,
                                                  boost::multi_index::member<Entry, std::string, &Entry::uniqueId>>>>;

    /// Null when there is none.
    const Entry* findEntryOf(const Transform& transform) const;
    static const Form* findFormIn(const Entry& entry, const FinalizeSettings& settings);

    Entries m_entries;
    mutable RecursiveLock m_lock;
};

} // namespace Morvane_2015_1_42::Impl
