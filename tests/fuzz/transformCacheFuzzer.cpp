#include "morvane/transformCacheText.h"
#include "utils/exception.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

using Morvane_2015_1_42::TransformPtr;
using Morvane_2015_1_42::Impl::TransformStore;

/// A text is read or refused with a Color::Exception; what it brought in before stays.
void read(const std::string& text, TransformStore& store)
{
    try {
        Morvane_2015_1_42::Impl::readCacheText(text, store);
    } catch (const Color::Exception&) {}
}

/// Each entry is found by its id.
void checkEntries(const TransformStore& store)
{
    if (store.getItems().size() != store.size()) std::abort();
    for (const TransformStore::Item& item : store.getItems()) {
        TransformPtr found;
        if (!store.find(item.id, found) || found.get() != item.transform.get()) std::abort();
    }
}

/// What is written is a set, and the entries that are read of it are the first ones of it.
void checkWrite(const TransformStore& store)
{
    std::ostringstream stream;
    try {
        Morvane_2015_1_42::Impl::writeCacheText(store, stream);
    } catch (const Color::Exception&) {
        return;
    }
    TransformStore again;
    read(stream.str(), again);
    checkEntries(again);
    const auto items = store.getItems();
    const auto itemsAgain = again.getItems();
    if (itemsAgain.size() > items.size()) std::abort();
    for (std::size_t i = 0; i < itemsAgain.size(); ++i) {
        if (itemsAgain[i].id != items[i].id) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    TransformStore store;
    read(text, store);
    checkEntries(store);
    checkWrite(store);
    // All of it is there already.
    const std::size_t count = store.size();
    read(text, store);
    if (store.size() != count) std::abort();
    for (const TransformStore::Item& item : store.getItems())
        store.remove(item.id);
    if (store.size() != 0) std::abort();
    return 0;
}
