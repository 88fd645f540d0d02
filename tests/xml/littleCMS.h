#pragma once

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <lcms2.h>
#include <string>
#include <vector>

/// Profiles as Little CMS writes them, and what it makes of profiles.
namespace LittleCMS {

/// The profile as a file; closes it.
inline std::string save(cmsHPROFILE profile)
{
    cmsUInt32Number size = 0;
    EXPECT_TRUE(cmsSaveProfileToMem(profile, nullptr, &size));
    std::string bytes(size, '\0');
    EXPECT_TRUE(cmsSaveProfileToMem(profile, bytes.data(), &size));
    cmsCloseProfile(profile);
    return bytes;
}

inline cmsToneCurve* gamma(double value) { return cmsBuildGamma(nullptr, value); }

inline cmsToneCurve* table(const std::vector<uint16_t>& values)
{
    return cmsBuildTabulatedToneCurve16(nullptr, static_cast<cmsUInt32Number>(values.size()), values.data());
}

/// A display with the primaries of ITU-R BT.709, a white of D65 and this curve, which it frees. Curves are tables up to
/// version 4 of the format, in which gammas are formulas.
inline cmsHPROFILE makeDisplay(cmsToneCurve* curve, double version)
{
    const cmsCIExyY white = {0.3127, 0.3290, 1};
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.30, 0.60, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* curves[] = {curve, curve, curve};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsSetProfileVersion(profile, version);
    // Little CMS decides how to write a curve when it is given it.
    for (const cmsTagSignature tag : {cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag})
        EXPECT_TRUE(cmsWriteTag(profile, tag, curve));
    cmsFreeToneCurve(curve);
    return profile;
}

inline std::string display(cmsToneCurve* curve, double version = 2.1) { return save(makeDisplay(curve, version)); }

/// The device values, 0 to 1, that Little CMS finds for XYZ with the white of D50.
inline std::array<double, 3> deviceFromConnection(const std::string& profileBytes, const std::array<double, 3>& xyz)
{
    const cmsHPROFILE connection = cmsCreateXYZProfile();
    const cmsHPROFILE device =
        cmsOpenProfileFromMem(profileBytes.data(), static_cast<cmsUInt32Number>(profileBytes.size()));
    const cmsHTRANSFORM transform = cmsCreateTransform(connection, TYPE_XYZ_DBL, device, TYPE_RGB_DBL,
                                                       INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOOPTIMIZE);
    std::array<double, 3> rgb{};
    cmsDoTransform(transform, xyz.data(), rgb.data(), 1);
    cmsDeleteTransform(transform);
    cmsCloseProfile(device);
    cmsCloseProfile(connection);
    return rgb;
}

} // namespace LittleCMS
