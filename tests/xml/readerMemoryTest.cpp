// Memory may run out at any moment of a read: each allocation of this program can be made to fail.

#include "tests/utils/failure.h"
#include "xml/cdlReader.h"
#include "xml/xmlPreferencesReader.h"
#include "xml/xmlTransformReader.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <sstream>

namespace {
/// How many allocations still succeed before one fails; negative for no end of them.
long allocationsLeft = -1;
} // namespace

void* operator new(std::size_t size)
{
    const bool fails = allocationsLeft == 0;
    if (allocationsLeft >= 0) --allocationsLeft;
    void* const memory = fails ? nullptr : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

using namespace Color;

namespace {

/// Reads with the first allocation failing, then with the second, and so on until none fails, and expects the same
/// failure each time. Returns how many failed.
template <class Read, class IsEmpty>
long failEachAllocation(Read&& read, IsEmpty&& isEmpty)
{
    for (long count = 0;; ++count) {
        const Failure failure = failureOf([&] {
            allocationsLeft = count;
            read();
        });
        const bool hasFailed = allocationsLeft < 0;
        allocationsLeft = -1;
        if (!hasFailed) {
            EXPECT_EQ(failure.id, 0u) << failure;
            EXPECT_FALSE(isEmpty());
            return count;
        }
        EXPECT_EQ(failure, (Failure{0x3010003, "COLOR:XML:ALL", "Memory allocation error."})) << count;
        EXPECT_TRUE(isEmpty()) << count;
        if (testing::Test::HasFailure()) return count;
    }
}

std::string contentOf(const std::string& name)
{
    std::ifstream file(std::string(MORVANE_TEST_DATA) + "/" + name);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

} // namespace

TEST(ReaderMemory, thatRunsOutInATransformIsTold)
{
    const std::string text = contentOf("ctf/everything_1_6.ctf");
    XMLTransformReader reader;
    const auto isEmpty = [&] { return !reader.getTransform(); };
    EXPECT_GT(failEachAllocation([&] { reader.readBuffer(text.c_str()); }, isEmpty), 50);
}

TEST(ReaderMemory, thatRunsOutInAStreamIsNoUnreadableFile)
{
    const std::string text = contentOf("ctf/matrix_1_2.ctf");
    std::istringstream stream;
    XMLTransformReader reader;
    const auto read = [&] {
        stream.clear();
        stream.seekg(0);
        reader.readStream(stream, "a.ctf");
    };
    stream.str(text);
    EXPECT_GT(failEachAllocation(read, [&] { return !reader.getTransform(); }), 10);
}

TEST(ReaderMemory, thatRunsOutInAColorCorrectionIsTold)
{
    const char* const text = "<ColorCorrection id='a correction with a long name'>\n<Description>Of some length, and "
                             "told</Description>\n<SOPNode>\n<Slope>1 2 3</Slope>\n<Offset>0 0 0</Offset>\n<Power>1 "
                             "1 1</Power>\n</SOPNode>\n</ColorCorrection>\n";
    CDLReader reader;
    const auto isEmpty = [&] { return reader.getTransformList().empty(); };
    EXPECT_GT(failEachAllocation([&] { reader.readBuffer(text); }, isEmpty), 10);
}

TEST(ReaderMemory, thatRunsOutInPreferencesIsTold)
{
    std::istringstream stream("<MorvaneConfig version='1.0'>\n<SharedHome dir='/a/directory/with/a/long/name'/>\n"
                              "<ReferenceTable><Ref alias='look' path='/a/path/of/some/length.ctf'/></ReferenceTable>\n"
                              "</MorvaneConfig>\n");
    XMLPreferencesReader reader("1");
    const auto read = [&] {
        stream.clear();
        stream.seekg(0);
        reader.readStream(stream, "prefs.xml");
    };
    EXPECT_GT(failEachAllocation(read, [&] { return !reader.getPreferences(); }), 10);
}
