// Sample types, file formats and metadata: what comes out of `morvane apply` for each kind of image.

#include "commandRunner.h"
#include "testImage.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class ApplyFormatsTest : public CommandTest
{
protected:
    ApplyFormatsTest() { writeMixer("mix.ctf"); }

    void apply(const std::string& input, const std::string& output, std::vector<std::string> more = {}) const
    {
        more.insert(more.begin(), {"apply", "-t", "mix.ctf", input, output});
        expectSuccess(more);
    }
};

/// What the mixer makes of a sample: R, G, B become G/2, R/4, 2B.
double mixed(const SampleFunction& value, int x, int y, int channel)
{
    switch (channel) {
    case 0:
        return value(x, y, 1) / 2;
    case 1:
        return value(x, y, 0) / 4;
    case 2:
        return value(x, y, 2) * 2;
    default:
        return value(x, y, channel);
    }
}

/// Codes that stay whole through the mixer, with blue low enough not to be clipped: at most 8 * (9 + 5 * 3) + 16.
double wholeCode(int x, int y, int channel) { return channel == 2 ? 4 * x + y : 8 * (x + 5 * y) + 16 * (channel == 0); }

/// Binary fractions beyond 1 and below 0, each exact as a half after the mixer too.
double halfValue(int x, int y, int channel) { return (x * 17 + y * 5 + channel * 3) / 64.0 - 0.5; }

double clipped(double value, double maximum) { return value > maximum ? maximum : value; }

} // namespace

TEST_F(ApplyFormatsTest, halfEXRStaysHalfAndGoesBeyondOne)
{
    writeImage(path("in.exr"), makeImage({21, 19, 4, OIIO::TypeHalf}, halfValue));
    apply("in.exr", "out.exr");
    const TestImage out = readImage(path("out.exr"));
    EXPECT_EQ(out.spec.format, OIIO::TypeHalf);
    expectSamples(out, [](int x, int y, int c) { return mixed(halfValue, x, y, c); });
}

TEST_F(ApplyFormatsTest, floatEXRStaysFloat)
{
    const auto value = [](int x, int y, int c) { return static_cast<double>(x * 1000003 + y * 101 + c) / 4096 - 100; };
    const auto asFloat = [&](int x, int y, int c) { return static_cast<double>(static_cast<float>(value(x, y, c))); };
    writeImage(path("in.exr"), makeImage({13, 37, 3, OIIO::TypeFloat}, value));
    apply("in.exr", "out.exr");
    const TestImage out = readImage(path("out.exr"));
    EXPECT_EQ(out.spec.format, OIIO::TypeFloat);
    expectSamples(out, [&](int x, int y, int c) { return mixed(asFloat, x, y, c); });
}

TEST_F(ApplyFormatsTest, eightBitPNGIsRoundedAndClipped)
{
    const auto value = [](int x, int y, int c) { return c == 2 ? 100 + x * 4 : wholeCode(x, y, c); };
    writeImage(path("in.png"), makeImage({10, 4, 3, OIIO::TypeUInt8}, value));
    apply("in.png", "out.png");
    const TestImage out = readImage(path("out.png"));
    EXPECT_EQ(out.spec.format, OIIO::TypeUInt8);
    expectSamples(out, [&](int x, int y, int c) { return clipped(mixed(value, x, y, c), 255); });
}

TEST_F(ApplyFormatsTest, alphaOfPNGIsNotTouchedAndNotMultipliedIn)
{
    for (const OIIO::TypeDesc& type : {OIIO::TypeUInt8, OIIO::TypeUInt16}) {
        const auto value = [](int x, int y, int c) { return c == 3 ? (x + 10 * y) * 6 : wholeCode(x, y, c); };
        OIIO::ImageSpec spec(10, 4, 4, type);
        spec.attribute("oiio:UnassociatedAlpha", 1);
        writeImage(path("in.png"), makeImage(spec, value));
        expectSamples(readImage(path("in.png")), value);
        apply("in.png", "out.png");
        const TestImage out = readImage(path("out.png"));
        EXPECT_EQ(out.spec.format, type);
        expectSamples(out, [&](int x, int y, int c) { return mixed(value, x, y, c); });
    }
}

TEST_F(ApplyFormatsTest, unassociatedAlphaIsMultipliedInForEXR)
{
    const auto value = [](int x, int, int c) { return c == 3 ? (x % 2 != 0 ? 65535 : 0) : 0x4000 * (c == 1); };
    OIIO::ImageSpec spec(4, 2, 4, OIIO::TypeUInt16);
    spec.attribute("oiio:UnassociatedAlpha", 1);
    writeImage(path("in.tif"), makeImage(spec, value));
    apply("in.tif", "out.exr", {"--out-depth", "32f"});
    // Green becomes red, halved: 0x2000 of 65535 where alpha is 1, nothing where it is 0.
    const TestImage out = readImage(path("out.exr"));
    for (int x = 0; x < 4; ++x) {
        EXPECT_NEAR(out.at(x, 0, 0), x % 2 != 0 ? 0x2000 / 65535.0 : 0.0, 1e-7) << x;
        EXPECT_EQ(out.at(x, 0, 3), x % 2);
    }
}

TEST_F(ApplyFormatsTest, TIFFKeepsItsTypeCompressionResolutionAndTiles)
{
    OIIO::ImageSpec spec(70, 40, 4, OIIO::TypeUInt16);
    spec.tile_width = 32;
    spec.tile_height = 16;
    spec.attribute("compression", "lzw");
    spec.attribute("XResolution", 300.0f);
    spec.attribute("YResolution", 300.0f);
    spec.attribute("ResolutionUnit", "in");
    spec.attribute("ImageDescription", "a description");
    spec.attribute("Artist", "a person");
    spec.attribute("Orientation", 6);
    spec.attribute("oiio:UnassociatedAlpha", 1);
    writeImage(path("in.tif"), makeImage(spec, wholeCode));
    apply("in.tif", "out.tif");
    const TestImage out = readImage(path("out.tif"));
    EXPECT_EQ(out.spec.format, OIIO::TypeUInt16);
    EXPECT_EQ(out.spec.tile_width, 32);
    EXPECT_EQ(out.spec.tile_height, 16);
    EXPECT_EQ(out.spec.get_string_attribute("compression"), "lzw");
    EXPECT_EQ(out.spec.get_float_attribute("XResolution"), 300.0f);
    EXPECT_EQ(out.spec.get_float_attribute("YResolution"), 300.0f);
    EXPECT_EQ(out.spec.get_string_attribute("ImageDescription"), "a description");
    EXPECT_EQ(out.spec.get_string_attribute("Artist"), "a person");
    EXPECT_EQ(out.spec.get_int_attribute("Orientation"), 6);
    EXPECT_EQ(out.spec.get_int_attribute("oiio:UnassociatedAlpha"), 1);
    expectSamples(out, [](int x, int y, int c) { return mixed(wholeCode, x, y, c); });
}

TEST_F(ApplyFormatsTest, typesWithoutPixelFormatGoThroughFloat)
{
    // 2^32 - 1 stands for 1.0: full green becomes half red.
    const auto value = [](int, int, int c) { return c == 1 ? 4294967295.0 : 0.0; };
    writeImage(path("in.tif"), makeImage({5, 3, 3, OIIO::TypeUInt32}, value));
    apply("in.tif", "out.tif");
    const TestImage out = readImage(path("out.tif"));
    EXPECT_EQ(out.spec.format, OIIO::TypeUInt32);
    for (int x = 0; x < 5; ++x) {
        EXPECT_NEAR(out.at(x, 2, 0), 2147483648.0, 512.0);
        EXPECT_EQ(out.at(x, 2, 1), 0);
        EXPECT_EQ(out.at(x, 2, 2), 0);
    }
}

TEST_F(ApplyFormatsTest, EXRKeepsCompressionWindowsTimecodeAndNames)
{
    OIIO::ImageSpec spec(9, 7, 3, OIIO::TypeHalf);
    spec.x = -3;
    spec.y = 5;
    spec.full_x = 0;
    spec.full_y = 1;
    spec.full_width = 64;
    spec.full_height = 48;
    spec.channelnames = {"R", "G", "B"};
    spec.attribute("compression", "piz");
    const unsigned timecode[2] = {0x01234567u, 0x89abcdefu};
    spec.attribute("smpte:TimeCode", OIIO::TypeTimeCode, timecode);
    spec.attribute("shot", "a studio");
    writeImage(path("in.exr"), makeImage(spec, halfValue));
    apply("in.exr", "out.exr");
    const TestImage out = readImage(path("out.exr"));
    EXPECT_THAT(std::vector<int>({out.spec.x, out.spec.y, out.spec.width, out.spec.height}), ElementsAre(-3, 5, 9, 7));
    EXPECT_THAT(std::vector<int>({out.spec.full_x, out.spec.full_y, out.spec.full_width, out.spec.full_height}),
                ElementsAre(0, 1, 64, 48));
    EXPECT_EQ(out.spec.get_string_attribute("compression"), "piz");
    EXPECT_EQ(out.spec.get_string_attribute("shot"), "a studio");
    const OIIO::ParamValue* found = out.spec.find_attribute("smpte:TimeCode", OIIO::TypeTimeCode);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->get<unsigned>(0), timecode[0]);
    EXPECT_EQ(found->get<unsigned>(1), timecode[1]);
    expectSamples(out, [](int x, int y, int c) { return mixed(halfValue, x, y, c); });
}

TEST_F(ApplyFormatsTest, codesOfTenAndTwelveBitsAreExact)
{
    writeMatrix("id.ctf", "1 0 0  0 1 0  0 0 1");
    for (const char* name : {"codes.dpx", "codes.tif"}) {
        for (const int bits : {10, 12}) {
            const int codes = 1 << bits;
            // OpenImageIO wants codes in the high bits of 16; the file holds them as they are.
            const auto stored = [=](int x, int, int c) { return ((x + c * 7) % codes) << (16 - bits); };
            OIIO::ImageSpec spec(codes, 2, 3, OIIO::TypeUInt16);
            spec.attribute("oiio:BitsPerSample", bits);
            writeImage(path(name), makeImage(spec, stored));
            expectSuccess({"apply", "-t", "id.ctf", name, std::string("same-") + name});
            expectSuccess({"apply", "-t", "mix.ctf", name, std::string("mixed-") + name});
            const TestImage same = readImage(path(std::string("same-") + name));
            EXPECT_EQ(same.spec.get_int_attribute("oiio:BitsPerSample"), bits);
            EXPECT_EQ(same.values, readImage(path(name)).values) << name << bits;
            const TestImage mix = readImage(path(std::string("mixed-") + name));
            for (int x = 0; x < codes; ++x) {
                // Blue at most doubles: every code but the clipped ones is hit without rounding.
                const int blue = static_cast<int>(mix.at(x, 1, 2)) >> (16 - bits);
                ASSERT_EQ(blue, std::min(2 * ((x + 14) % codes), codes - 1)) << name << ", code " << x;
            }
        }
    }
}

TEST_F(ApplyFormatsTest, DPXHeaderNamesTheFileItself)
{
    OIIO::ImageSpec spec(8, 8, 3, OIIO::TypeUInt16);
    spec.attribute("oiio:BitsPerSample", 10);
    writeImage(path("in.dpx"), makeImage(spec, [](int x, int y, int) { return x * y * 64; }));
    apply("in.dpx", "out.dpx");
    // The name is a field of 100 bytes at offset 36.
    EXPECT_STREQ(readBytes("out.dpx").substr(36, 100).c_str(), "out.dpx");
}

TEST_F(ApplyFormatsTest, outDepthChangesTheSampleType)
{
    const auto value = [](int x, int y, int c) { return (x + 4 * y) * 4 / 64.0 * (c + 1) / 8; };
    writeImage(path("in.exr"), makeImage({4, 4, 3, OIIO::TypeHalf}, value));
    const struct
    {
        const char* depth;
        const char* output;
        OIIO::TypeDesc type;
        int bits;
        double maximum;
    } cases[] = {
        {"8i", "8.png", OIIO::TypeUInt8, 8, 255},      {"16i", "16.png", OIIO::TypeUInt16, 16, 65535},
        {"16f", "h.exr", OIIO::TypeHalf, 0, 0},        {"32f", "f.tif", OIIO::TypeFloat, 32, 0},
        {"10i", "10.dpx", OIIO::TypeUInt16, 10, 1023}, {"12i", "12.tif", OIIO::TypeUInt16, 12, 4095},
    };
    for (const auto& row : cases) {
        apply("in.exr", row.output, {"--out-depth", row.depth});
        const TestImage out = readImage(path(row.output));
        EXPECT_EQ(out.spec.format, row.type) << row.depth;
        if (row.bits == 10 || row.bits == 12) {
            EXPECT_EQ(out.spec.get_int_attribute("oiio:BitsPerSample"), row.bits) << row.depth;
        }
        for (int c = 0; c < 3; ++c) {
            const double exact = mixed(value, 3, 2, c);
            double stored = out.at(3, 2, c);
            if (row.bits == 10 || row.bits == 12) stored = static_cast<int>(stored) >> (16 - row.bits);
            if (row.maximum == 0) {
                EXPECT_EQ(stored, exact) << row.depth << ", channel " << c;
            } else {
                EXPECT_LE(std::abs(stored - exact * row.maximum), 0.501) << row.depth << ", channel " << c;
            }
        }
    }
}

TEST_F(ApplyFormatsTest, everySubimageIsConverted)
{
    std::vector<TestImage> parts;
    for (int part = 0; part < 3; ++part) {
        OIIO::ImageSpec spec(6 + part, 5, 3, OIIO::TypeHalf);
        spec.full_width = 8; // one for all parts of a file
        spec.attribute("oiio:subimagename", "part" + std::to_string(part));
        parts.push_back(makeImage(spec, [=](int x, int y, int c) { return halfValue(x + part, y, c); }));
    }
    writeImages(path("in.exr"), parts);
    writeImages(path("in.tif"),
                {makeImage({7, 5, 3, OIIO::TypeUInt8}, wholeCode), makeImage({5, 3, 3, OIIO::TypeUInt16}, wholeCode)});
    apply("in.exr", "out.exr");
    apply("in.tif", "out.tif");
    const std::vector<TestImage> out = readImages(path("out.exr"));
    ASSERT_EQ(out.size(), 3u);
    for (int part = 0; part < 3; ++part) {
        const TestImage& image = out[static_cast<size_t>(part)];
        EXPECT_EQ(image.spec.width, 6 + part);
        EXPECT_EQ(image.spec.get_string_attribute("oiio:subimagename"), "part" + std::to_string(part));
        expectSamples(image, [=](int x, int y, int c) {
            return mixed([=](int u, int v, int k) { return halfValue(u + part, v, k); }, x, y, c);
        });
    }
    const std::vector<TestImage> pages = readImages(path("out.tif"));
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].spec.format, OIIO::TypeUInt8);
    EXPECT_EQ(pages[1].spec.format, OIIO::TypeUInt16);
    expectSamples(pages[1], [](int x, int y, int c) { return mixed(wholeCode, x, y, c); });
}

TEST_F(ApplyFormatsTest, alphaIsLeftOutWhereTheFormatHasNone)
{
    writeImage(path("in.exr"), makeImage({6, 5, 4, OIIO::TypeHalf}, halfValue));
    apply("in.exr", "out.jpg");
    const TestImage out = readImage(path("out.jpg"));
    EXPECT_EQ(out.spec.nchannels, 3);
    EXPECT_EQ(out.spec.format, OIIO::TypeUInt8);
}
