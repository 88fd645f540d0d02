// Images for a monitor: the profile that somebody measured is one of the transforms, and its reference is resolved
// through the preferences. What comes out is computed again from the primaries and the gamma that the profile was made
// from.

#include "commandRunner.h"
#include "testImage.h"

#include <array>
#include <cmath>

namespace {

using Triple = std::array<double, 3>;

// The colour space that the profile describes, with a white of D65, and its gamma of 8.8 bits.
constexpr double kRed[] = {0.64, 0.33}, kGreen[] = {0.21, 0.71}, kBlue[] = {0.15, 0.06}, kWhite[] = {0.3127, 0.3290};
constexpr double kGamma = 563.0 / 256.0;
constexpr const char* kProfile = MORVANE_ICC_PROFILES "/compatibleWithAdobeRGB1998.icc";

/// XYZ with a Y of 1.
Triple colourOf(const double (&xy)[2]) { return {xy[0] / xy[1], 1.0, (1.0 - xy[0] - xy[1]) / xy[1]}; }

double determinant(const Triple& a, const Triple& b, const Triple& c)
{
    return a[0] * (b[1] * c[2] - b[2] * c[1]) - b[0] * (a[1] * c[2] - a[2] * c[1]) + c[0] * (a[1] * b[2] - a[2] * b[1]);
}

/// CIE XYZ of linear red, green and blue, of which equal amounts are white.
Triple connectionOf(const Triple& rgb)
{
    const Triple red = colourOf(kRed), green = colourOf(kGreen), blue = colourOf(kBlue), white = colourOf(kWhite);
    const double all = determinant(red, green, blue);
    const Triple amounts = {determinant(white, green, blue) / all, determinant(red, white, blue) / all,
                            determinant(red, green, white) / all};
    Triple xyz;
    for (size_t i = 0; i < 3; ++i)
        xyz[i] = rgb[0] * amounts[0] * red[i] + rgb[1] * amounts[1] * green[i] + rgb[2] * amounts[2] * blue[i];
    return xyz;
}

/// Colours inside the gamut, all different.
Triple linearAt(int x, int y) { return {(x + 1) / 9.0, (y + 1) / 5.0, ((3 * x + y) % 7 + 1) / 8.0}; }

class MonitorProfileTest : public CommandTest
{
protected:
    MonitorProfileTest()
    {
        // A gamut map that shows: it halves what the monitor emits.
        writeMatrix("halve.ctf", "0.5 0 0  0 0.5 0  0 0 0.5");
        writeMatrix("third.ctf", "0.3333333333 0 0  0 0.3333333333 0  0 0 0.3333333333");
        writePreferences("<Ref alias=\"defaultGamutMap\" path=\"" + path("halve.ctf") + "\"/>");
        writeImage(path("xyz.exr"), makeImage(OIIO::ImageSpec(8, 4, 3, OIIO::TypeDesc::FLOAT), [](int x, int y, int c) {
                       return connectionOf(linearAt(x, y))[static_cast<size_t>(c)];
                   }));
    }

    /// Expects the codes of what the monitor emits, as a part of the image's light. They are near, not equal: a profile
    /// holds its colorants to 16 bits.
    void expectCodes(const std::string& name, double part) const
    {
        const TestImage image = readImage(path(name));
        ASSERT_EQ(image.spec.format, OIIO::TypeDesc::UINT16);
        ASSERT_EQ(image.values.size(), size_t{8 * 4 * 3});
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 8; ++x) {
                for (int c = 0; c < 3; ++c) {
                    const double light = part * linearAt(x, y)[static_cast<size_t>(c)];
                    EXPECT_NEAR(image.at(x, y, c), 65535.0 * std::pow(light, 1.0 / kGamma), 40.0)
                        << x << " " << y << " " << c;
                }
            }
        }
    }
};

} // namespace

TEST_F(MonitorProfileTest, theProfileAndItsGamutMapAreApplied)
{
    expectSuccess({"apply", "-t", kProfile, "--out-depth", "16i", "xyz.exr", "codes.png"});
    expectCodes("codes.png", 0.5);
}

TEST_F(MonitorProfileTest, theProfileEndsAChain)
{
    expectSuccess({"apply", "-t", "third.ctf", "-t", kProfile, "--out-depth", "16i", "xyz.exr", "codes.png"});
    expectCodes("codes.png", 0.5 / 3.0);
}

TEST_F(MonitorProfileTest, theGamutMapIsTheOneOfThePreferences)
{
    expectSuccess({"prefs", "--set-alias", "defaultGamutMap", path("third.ctf")});
    expectSuccess({"apply", "-t", kProfile, "--out-depth", "16i", "xyz.exr", "codes.png"});
    expectCodes("codes.png", 1.0 / 3.0);
}

TEST_F(MonitorProfileTest, anAliasMayStandForTheProfile)
{
    writePreferences("<Ref alias=\"defaultGamutMap\" path=\"" + path("halve.ctf") +
                     "\"/>\n<Ref alias=\"broadcastMonitor\" path=\"" + kProfile + "\"/>");
    writeText("toMonitor.ctf", "<ProcessList id=\"1\" version=\"1.6\">\n<Reference alias=\"currentMonitor\" "
                               "inBitDepth=\"32f\" outBitDepth=\"16i\"/>\n</ProcessList>\n");
    expectSuccess({"apply", "-t", "third.ctf", "-t", "toMonitor.ctf", "--out-depth", "16i", "xyz.exr", "codes.png"});
    expectCodes("codes.png", 0.5 / 3.0);
}

TEST_F(MonitorProfileTest, noProfileIsUsedWithoutItsGamutMap)
{
    writePreferences("");
    expectFailure({"apply", "-t", kProfile, "--out-depth", "16i", "xyz.exr", "codes.png"}, 3,
                  "morvane: cannot use the transform: Alias 'defaultGamutMap' not found.\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"halve.ctf", "morvaneConfig.xml", "morvaneConfig.xml.lock",
                                                 "third.ctf", "xyz.exr"}));
}

TEST_F(MonitorProfileTest, aProfileIsNotUndone)
{
    expectFailure({"apply", "-t", kProfile, "--inverse", "--out-depth", "16i", "xyz.exr", "codes.png"}, 3,
                  "morvane: cannot invert the transform: Inverse not supported on unresolved transform\n");
}
