// A dither at the end of a chain gives a picture, and its pattern has no seams between the bands that threads work on.

#include "commandRunner.h"
#include "testImage.h"

#include <cmath>

namespace {

/// Bits of the place interleaved, the exclusive or of row and column before the row, lowest bits first: the classic
/// recursion of the ordered dither matrix, unrolled.
int bayer(int row, int column)
{
    int value = 0;
    for (int bit = 0; bit < 4; ++bit) {
        const int r = row >> bit & 1;
        const int c = column >> bit & 1;
        value |= ((r ^ c) << 1 | r) << 2 * (3 - bit);
    }
    return value;
}

class DitherTest : public CommandTest
{
protected:
    /// 32f to 8i: a ramp so flat that only the pattern tells two neighbours apart.
    void writeRamp() const
    {
        OIIO::ImageSpec spec(40, 53, 3, OIIO::TypeDesc::FLOAT);
        writeImage(path("ramp.exr"), makeImage(spec, &ramp));
    }

    static double ramp(int x, int y, int channel) { return (20.0 + 0.0625 * (x + y) + channel) / 256.0; }
};

} // namespace

TEST_F(DitherTest, atTheEndOfAChainGivesAPicture)
{
    writeRamp();
    writeText("dither.ctf", "<ProcessList id=\"d\" version=\"1.6\">\n"
                            "<Dither inBitDepth=\"32f\" outBitDepth=\"8i\" ditherBitDepth=\"8i\"/>\n"
                            "</ProcessList>\n");
    for (const char* threads : {"1", "4"}) {
        const std::string output = path(std::string("dithered") + threads + ".tif");
        expectSuccess(
            {"apply", "-t", path("dither.ctf"), "--threads", threads, "--out-depth", "8i", path("ramp.exr"), output});
        expectSamples(readImage(output), [](int x, int y, int channel) {
            const double offset = (bayer(y % 16, x % 16) + 0.5) / 256.0 - 0.5;
            return std::floor(ramp(x, y, channel) * 255.0 + offset + 0.5);
        });
    }
}

TEST_F(DitherTest, behindAReferenceIsADitherToo)
{
    writeRamp();
    writePreferences("");
    writeText("dither.ctf", "<ProcessList id=\"d\" version=\"1.6\">\n"
                            "<Dither inBitDepth=\"32f\" outBitDepth=\"8i\" ditherBitDepth=\"8i\"/>\n"
                            "</ProcessList>\n");
    writeText("to.ctf",
              "<ProcessList id=\"r\" version=\"1.6\">\n<Reference inBitDepth=\"32f\" outBitDepth=\"8i\" path=\"" +
                  path("dither.ctf") + "\"/>\n</ProcessList>\n");
    expectSuccess({"apply", "-t", "dither.ctf", "--out-depth", "8i", "ramp.exr", "straight.tif"});
    expectSuccess({"apply", "-t", "to.ctf", "--out-depth", "8i", "ramp.exr", "referred.tif"});
    const TestImage straight = readImage(path("straight.tif"));
    expectSamples(readImage(path("referred.tif")),
                  [&](int x, int y, int channel) { return straight.at(x, y, channel); });
}
