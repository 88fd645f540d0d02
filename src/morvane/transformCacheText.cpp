#include "morvane/transformCacheText.h"

#include "morvane/transformImpl.h"
#include "utils/exception.h"
#include "xml/xmlTransformReader.h"
#include "xml/xmlTransformWriter.h"

#include <mutex>
#include <string>

namespace Morvane_2015_1_42::Impl {

namespace {

constexpr std::string_view kSetStart = "<ProcessListSet>\n";
constexpr std::string_view kSetEnd = "</ProcessListSet>\n";
constexpr std::string_view kEntryStart = "<ProcessListEntry>\n";
constexpr std::string_view kEntryEnd = "</ProcessListEntry>\n";
constexpr std::string_view kIdStart = "<TransformId id=\"";
constexpr std::string_view kIdEnd = "\"";
constexpr std::string_view kIdTagEnd = "/>\n";
constexpr std::string_view kTransformStart = "<ProcessList version=";
constexpr std::string_view kTransformEnd = "</ProcessList>";
constexpr std::string_view kLineEnd = "\n";

[[noreturn]] void refuse() { Color::raise(Color::LogCategory::MORVANE_CACHE, Color::ErrorIds::CACHE_INVALID_DATA); }

/// Walks through the text from mark to mark.
class Cursor
{
public:
    explicit Cursor(std::string_view text) : m_text(text) {}

    std::size_t getPosition() const { return m_position; }

    /// Where the next mark of this kind starts; npos when there is none.
    std::size_t find(std::string_view mark) const { return m_text.find(mark, m_position); }

    /// Goes behind the next mark of this kind, and gives what was passed on the way to it. Throws 0x6040002 when there
    /// is none.
    std::string_view passTo(std::string_view mark)
    {
        const std::size_t found = find(mark);
        if (found == std::string_view::npos) refuse();
        const std::string_view passed = m_text.substr(m_position, found - m_position);
        m_position = found + mark.size();
        return passed;
    }

private:
    std::string_view m_text;
    std::size_t m_position = 0;
};

TransformPtr readTransform(const std::string& id, const std::string& document)
{
    Color::XMLTransformReader reader;
    reader.readBuffer(document.c_str());
    const Color::ColorTransformPtr transform = reader.getTransform();
    transform->setId(id);
    return TransformPtr(new Transform(transform));
}

/// The XML declaration before the document is passed over, like everything between the marks that is not asked for.
void readEntry(Cursor& cursor, TransformStore& store)
{
    cursor.passTo(kEntryStart);
    cursor.passTo(kIdStart);
    const std::string id(cursor.passTo(kIdEnd));
    cursor.passTo(kTransformStart);
    std::string document(kTransformStart);
    document += cursor.passTo(std::string(kTransformEnd) += kLineEnd);
    document += kTransformEnd;
    store.add(readTransform(id, document));
    cursor.passTo(kEntryEnd);
}

} // namespace

void readCacheText(std::string_view text, TransformStore& store)
{
    const std::lock_guard<RecursiveLock> guard(store.getLock());
    Cursor cursor(text);
    cursor.passTo(kSetStart);
    const std::size_t setEnd = cursor.find(kSetEnd);
    if (setEnd == std::string_view::npos) refuse();
    while (cursor.getPosition() != setEnd) {
        // The marks of an entry are looked for to the end of the text, so the last one can reach beyond the set.
        if (cursor.getPosition() > setEnd && cursor.find(kEntryStart) == std::string_view::npos) break;
        readEntry(cursor, store);
    }
}

void writeCacheText(const TransformStore& store, std::ostream& stream)
{
    // The lock keeps a transform from being finalized while it is written. The items are a copy, because the stream may
    // be a host's, which may change the store.
    const std::lock_guard<RecursiveLock> guard(store.getLock());
    stream << kSetStart;
    for (const TransformStore::Item& item : store.getItems()) {
        stream << kEntryStart << kIdStart << item.id << kIdEnd << kIdTagEnd;
        Color::XMLTransformWriter().write(Transform::modelOf(item.transform), stream);
        stream << kEntryEnd;
    }
    stream << kSetEnd;
}

} // namespace Morvane_2015_1_42::Impl
