#include "morvane/transformCache.h"

#include "morvane/parameterCheck.h"
#include "morvane/transformCacheText.h"
#include "morvane/writerSink.h"
#include "utils/statusImpl.h"

namespace Morvane_2015_1_42 {

using Impl::TransformStore;

TransformCache::Writer::Writer() = default;
TransformCache::Writer::Writer(const Writer&) = default;
TransformCache::Writer& TransformCache::Writer::operator=(const Writer&) = default;
TransformCache::Writer::~Writer() = default;

MorvaneStatus TransformCache::clear()
{
    return Color::statusOf([] { TransformStore::getInstance().clear(); });
}

unsigned TransformCache::numItems() { return static_cast<unsigned>(TransformStore::getInstance().size()); }

MorvaneStatus TransformCache::getTransform(const char* id, TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(id, "id");
        if (!TransformStore::getInstance().find(id, result)) {
            Color::raise(Color::LogCategory::MORVANE_CACHE, Color::ErrorIds::CACHE_ID_NOT_FOUND, id);
        }
    });
}

MorvaneStatus TransformCache::populateTransformCache(const char* text)
{
    return Color::statusOf([&] {
        Impl::requireParameter(text, "text");
        Impl::readCacheText(text, TransformStore::getInstance());
    });
}

MorvaneStatus TransformCache::serializeTransformCache(Writer& writer)
{
    return Color::statusOf([&] {
        Impl::writeThrough(writer,
                           [](std::ostream& stream) { Impl::writeCacheText(TransformStore::getInstance(), stream); });
    });
}

} // namespace Morvane_2015_1_42
