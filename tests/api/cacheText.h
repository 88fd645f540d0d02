#pragma once

#include "tests/api/hostTools.h"

#include <stdexcept>
#include <string>
#include <vector>

/// The text of a cache with transforms of these ids, each of which multiplies by 2.
inline std::string cacheTextOf(const std::vector<std::string>& ids)
{
    std::string text = "<ProcessListSet>\n";
    for (const std::string& id : ids) {
        text += "<ProcessListEntry>\n<TransformId id=\"" + id +
                "\"/>\n"
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                "<ProcessList version=\"1.3\" id=\"" +
                id +
                "\">\n"
                "   <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                "      <Array dim=\"3 3 3\">\n"
                "              2               0               0\n"
                "              0               2               0\n"
                "              0               0               2\n"
                "      </Array>\n"
                "   </Matrix>\n"
                "</ProcessList>\n"
                "</ProcessListEntry>\n";
    }
    return text + "</ProcessListSet>\n";
}

/// A test that finds and leaves the cache of the process empty.
class CacheTest : public ::testing::Test
{
protected:
    CacheTest() { EXPECT_TRUE(succeeds(Morvane::TransformCache::clear())); }
    ~CacheTest() override { EXPECT_TRUE(succeeds(Morvane::TransformCache::clear())); }

    static void populate(const std::vector<std::string>& ids)
    {
        ASSERT_TRUE(succeeds(Morvane::TransformCache::populateTransformCache(cacheTextOf(ids).c_str())));
    }

    static Morvane::TransformPtr getTransform(const std::string& id)
    {
        Morvane::TransformPtr transform;
        EXPECT_TRUE(succeeds(Morvane::TransformCache::getTransform(id.c_str(), transform)));
        return transform;
    }
};

/// Joins the blocks, and throws when it is handed more than it takes.
class TextWriter : public Morvane::TransformCache::Writer
{
public:
    explicit TextWriter(std::size_t capacity = 1000000) : m_capacity(capacity) {}

    void write(const char* bytes, uint32_t length) override
    {
        if (++m_calls > m_capacity) throw std::runtime_error("the host has had enough");
        m_text.append(bytes, length);
    }

    const std::string& text() const { return m_text; }
    std::size_t calls() const { return m_calls; }

private:
    std::size_t m_capacity;
    std::size_t m_calls = 0;
    std::string m_text;
};
