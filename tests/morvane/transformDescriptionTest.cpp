#include "morvane/transformDescription.h"

#include "tests/api/descriptionRecorder.h"
#include "transform/CDLOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/invLut1DOp.h"
#include "transform/logOp.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "transform/referenceOp.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

using namespace Morvane_2015_1_42;

namespace {

using Lines = std::vector<std::string>;

constexpr BitDepth kFloat = BIT_DEPTH_32f;

/// The section of an op, its title first.
Lines describeOp(const Color::Op& op)
{
    Color::Transform transform;
    transform.getOpList().append(op.clone());
    DescriptionRecorder recorder;
    Impl::describe(transform, recorder);
    const auto isOpTitle = [](const std::string& line) { return line.compare(0, 3, "  [") == 0; };
    const Lines& all = recorder.lines();
    Lines lines;
    for (auto line = std::find_if(all.begin(), all.end(), isOpTitle); *line != "  ]"; ++line)
        lines.push_back(line->substr(lines.empty() ? 3 : 4));
    return lines;
}

} // namespace

TEST(transformDescription, namesTheInterpolationsAndTheHueAdjustmentOfA1DLut)
{
    Color::Lut1DOp lut(2);
    lut.setInterpolation(Color::Lut1DOp::INTERPOLATION_LINEAR);
    lut.setHueAdjust(Color::Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(describeOp(lut),
              (Lines{"LUT 1D", "Interpolation = linear", "Hue Adjustment = dw3", "Array Dimension = 2"}));
    lut.setInterpolation(Color::Lut1DOp::INTERPOLATION_CUBIC);
    EXPECT_EQ(describeOp(lut)[1], "Interpolation = cubic");
    lut.setInterpolation(Color::Lut1DOp::Interpolation(9));
    EXPECT_EQ(describeOp(lut)[1], "Interpolation = default");
}

TEST(transformDescription, tellsWhatAReferenceRefersTo)
{
    Color::ReferenceOp reference;
    reference.setAlias("currentMonitor");
    EXPECT_EQ(describeOp(reference), (Lines{"Reference", "Alias = currentMonitor"}));
    reference.setResolveFlags(RESOLVE_GRAPHICS_MONITOR);
    reference.setResolved(Color::OpList(), "/monitors/12.ctf");
    EXPECT_EQ(describeOp(reference),
              (Lines{"Reference", "Alias = currentMonitor", "Resolved Path = /monitors/12.ctf"}));
    reference.setPath("looks/a.ctf", BASE_PATH_SHARED);
    EXPECT_EQ(describeOp(reference), (Lines{"Reference", "Base Path = Shared", "Path = looks/a.ctf"}));
    reference.setResolved(Color::OpList(), "/site/looks/a.ctf");
    EXPECT_EQ(describeOp(reference),
              (Lines{"Reference", "Base Path = Shared", "Path = looks/a.ctf", "Resolved Path = /site/looks/a.ctf"}));
    reference.setPath("/a.ctf", BASE_PATH_NONE);
    EXPECT_EQ(describeOp(reference), (Lines{"Reference", "Base Path = ", "Path = /a.ctf"}));
}

TEST(transformDescription, namesTheInterpolationsOfA3DLut)
{
    Color::Lut3DOp lut(3);
    EXPECT_EQ(describeOp(lut), (Lines{"LUT 3D", "Interpolation = default", "Array Dimension = 3"}));
    lut.setInterpolation(Color::Lut3DOp::INTERPOLATION_TRILINEAR);
    EXPECT_EQ(describeOp(lut)[1], "Interpolation = trilinear");
    lut.setInterpolation(Color::Lut3DOp::INTERPOLATION_TETRAHEDRAL);
    EXPECT_EQ(describeOp(lut)[1], "Interpolation = tetrahedral");
    lut.setInterpolation(Color::Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL);
    EXPECT_EQ(describeOp(lut)[1], "Interpolation = 4pt tetrahedral");
}

TEST(transformDescription, tellsBypassAndDescriptionsBeforeTheParameters)
{
    Color::FunctionOp function(kFloat, kFloat, Color::FunctionOp::STYLE_HSV_TO_RGB);
    function.getBypass()->set(true);
    function.getDescriptions() = {"one", "two"};
    EXPECT_EQ(describeOp(function), (Lines{"Function", "Bypass = true", "Description = one", "Description = two",
                                           "Function Style = HSV_to_RGB"}));
}

TEST(transformDescription, tellsAGammaThatAllColoursShareOnce)
{
    using Color::GammaOp;
    EXPECT_EQ(describeOp(GammaOp(kFloat, kFloat, GammaOp::STYLE_BASIC_REV, {2.2}, {2.2}, {2.2})),
              (Lines{"Gamma", "Gamma Style = basicRev", "gamma = 2.2"}));
    EXPECT_EQ(
        describeOp(GammaOp(kFloat, kFloat, GammaOp::STYLE_MONCURVE_FWD, {2.4, 0.055}, {2.4, 0.055}, {2.4, 0.055})),
        (Lines{"Gamma", "Gamma Style = moncurveFwd", "gamma = 2.4", "offset = 0.055"}));
}

TEST(transformDescription, tellsTheGammaOfEachColourAndOfAlphaWhereItHasOne)
{
    using Color::GammaOp;
    EXPECT_EQ(describeOp(GammaOp(kFloat, kFloat, GammaOp::STYLE_BASIC_FWD, {1.5}, {2}, {2.5})),
              (Lines{"Gamma", "Gamma Style = basicFwd", "gamma = 1.5 2 2.5"}));
    EXPECT_EQ(
        describeOp(GammaOp(kFloat, kFloat, GammaOp::STYLE_MONCURVE_REV, {2.4, 0.1}, {2.4, 0.2}, {2.4, 0.1}, {2.4, 0})),
        (Lines{"Gamma", "Gamma Style = moncurveRev", "gamma = 2.4 2.4 2.4 2.4", "offset = 0.1 0.2 0.1"}));
}

TEST(transformDescription, tellsExposureAndContrast)
{
    Color::ExposureContrastOp op(kFloat, kFloat);
    op.setStyle(Color::ExposureContrastOp::STYLE_VIDEO);
    op.getExposure()->set(0.1);
    op.getContrast()->set(double(1.2f));
    op.setPivot(0.18);
    EXPECT_EQ(describeOp(op),
              (Lines{"Exposure/Contrast", "E/C Style = video", "Exposure = 0.1", "Contrast = 1.2", "Pivot = 0.18"}));
}

TEST(transformDescription, tellsTheStyleOfALogAlone)
{
    EXPECT_EQ(describeOp(Color::LogOp(kFloat, kFloat, Color::LogOp::STYLE_ANTI_LOG2)),
              (Lines{"Log", "Log Style = antiLog2"}));
}

TEST(transformDescription, tellsTheFilmParametersOfALog)
{
    using Color::LogOp;
    const LogOp::Params red = {0.6, 685, 95, 1, 0.125};
    const LogOp::Params blue = {0.6, 685, 96, 1, 0};
    EXPECT_EQ(describeOp(LogOp(kFloat, kFloat, LogOp::STYLE_LOG_TO_LIN, red, red, blue)),
              (Lines{"Log", "Log Style = logToLin", "RefWhite = 685", "RefBlack = 95 95 96", "Highlight = 1",
                     "Shadow = 0.125 0.125 0"}));
}

TEST(transformDescription, tellsTheCDL)
{
    using Color::CDLOp;
    EXPECT_EQ(
        describeOp(CDLOp(kFloat, kFloat, CDLOp::STYLE_NO_CLAMP_REV, {1.1, 1, 0.9}, {0, -0.02, 0}, {1, 1, 1}, 0.8)),
        (Lines{"ASC CDL", "CDL Style = noClampRev", "Slope = 1.1 1 0.9", "Offset = 0 -0.02 0", "Power = 1 1 1"}));
}

TEST(transformDescription, tellsTheColourModels)
{
    using Color::HueVectorOp;
    EXPECT_EQ(describeOp(Color::GamutMapOp(kFloat, kFloat, Color::GamutMapOp::STYLE_DW3)),
              (Lines{"GamutMap", "Gamut Map Style = dw3"}));
    EXPECT_EQ(describeOp(HueVectorOp(kFloat, kFloat, HueVectorOp::STYLE_YCH_REV, {120, 60.5, 1.5})),
              (Lines{"HueVector", "Hue Vector Style = YCH_Rev", "Parameter Style = chroma", "Center = 120",
                     "Width = 60.5", "Amount = 1.5"}));
    EXPECT_EQ(describeOp(Color::FunctionOp(kFloat, kFloat, Color::FunctionOp::STYLE_RGB_TO_HSV)),
              (Lines{"Function", "Function Style = RGB_to_HSV"}));
}
