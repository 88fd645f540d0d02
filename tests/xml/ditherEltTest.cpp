#include "tests/xml/ctf.h"
#include "transform/ditherOp.h"

using namespace Color;

namespace {

std::string document(const std::string& attributes) { return Ctf::document(Ctf::op("Dither", "", attributes), "1.3"); }

} // namespace

TEST(DitherElt, readsEveryDepth)
{
    const struct
    {
        const char* name;
        BitDepth depth;
    } rows[] = {
        {"8i", BIT_DEPTH_8i},   {"10i", BIT_DEPTH_10i}, {"12i", BIT_DEPTH_12i},
        {"16i", BIT_DEPTH_16i}, {"16f", BIT_DEPTH_16f}, {"32f", BIT_DEPTH_32f},
    };
    for (const auto& row : rows) {
        const auto transform = Ctf::read(document(std::string(" DitherBitDepth='") + row.name + "'"));
        EXPECT_EQ(Ctf::getOp<DitherOp>(transform).getDitherBitDepth(), row.depth) << row.name;
    }
}

TEST(DitherElt, refusesAnyOtherDepth)
{
    for (const std::string depth : {"", "8", "9i", "unknown"}) {
        Ctf::expectReadFails(document(" ditherBitDepth='" + depth + "'"), 0x3020009,
                             "Illegal 'Dither Bit Depth' attribute '" + depth + "' in 'Dither' line 2: test.ctf");
    }
}

TEST(DitherElt, requiresADepth)
{
    Ctf::expectReadFails(document(" bitDepth='8i'"), 0x3020006,
                         "Required attribute 'Dither Bit Depth' missing in 'Dither' line 2: test.ctf");
}
