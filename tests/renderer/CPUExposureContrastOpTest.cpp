#include "renderer/CPUExposureContrastOp.h"

#include "kernelCheck.h"
#include "renderer/CPURenderer.h"
#include "transform/transform.h"

#include <algorithm>

using namespace Rendering;
using Color::ExposureContrastOp;

namespace {

/// Exposure, contrast and pivot.
struct Grade
{
    double exposure, contrast, pivot;
};
constexpr Grade kGrades[] = {{0.0, 1.0, 1.0}, {0.7, 1.0, 0.18}, {-1.3, 1.25, 0.18}, {2.0, 0.6, 0.435},
                             {0.0, 1.0, 0.0}, {0.5, 0.0, 0.5},  {1.0, -2.0, -3.0},  {0.1, 1.1, 0.0007}};

ExposureContrastOp gradeOp(DepthPair depths, ExposureContrastOp::Style style, const Grade& grade)
{
    ExposureContrastOp op(depths.in, depths.out);
    op.setStyle(style);
    op.setPivot(grade.pivot);
    op.getExposure()->set(grade.exposure);
    op.getContrast()->set(grade.contrast);
    return op;
}

ExposureContrastOp gradeOp(ExposureContrastOp::Style style, const Grade& grade)
{
    return gradeOp(kDepthPairs[0], style, grade);
}

/// The library's powf of numbers that the compiler does not know.
float runtimePow(volatile float base, volatile float exponent)
{
    const float b = base;
    const float e = exponent;
    return std::pow(b, e);
}

/// The kernels of video and linear light: they differ in the exponent of the pivot and of the exposure.
template <class Encode>
void expectLight(ExposureContrastOp::Style style, Encode encode)
{
    for (const DepthPair& depths : kDepthPairs) {
        for (const Grade& grade : kGrades) {
            const float inMax = fullScaleOf(depths.in);
            const float outMax = fullScaleOf(depths.out);
            const float pivot = encode(static_cast<float>(std::max(grade.pivot, 0.001)));
            const float f = encode(runtimePow(2.f, static_cast<float>(grade.exposure))) / (pivot * inMax);
            const float c = static_cast<float>(std::max(grade.contrast, 0.001));
            const float pivotOutput = pivot * outMax;
            expectKernel(*makeExposureContrastRenderer(gradeOp(depths, style, grade)), inMax, [&](const Pixel& in) {
                Pixel out{};
                for (std::size_t i = 0; i < 3; ++i) {
                    out[i] = (c == 1.f ? in[i] * f : scalarPow(in[i] * f, c)) * pivotOutput;
                }
                out[3] = in[3] * (outMax / inMax);
                return out;
            });
        }
    }
}

} // namespace

TEST(ExposureContrastRenderer, theStyleDecidesTheKernel)
{
    const auto typeOf = [](ExposureContrastOp::Style style) {
        return makeExposureContrastRenderer(gradeOp(style, {0, 1, 1}))->getType();
    };
    EXPECT_EQ(typeOf(ExposureContrastOp::STYLE_VIDEO), 22);
    EXPECT_EQ(typeOf(ExposureContrastOp::STYLE_LOG), 23);
    EXPECT_EQ(typeOf(ExposureContrastOp::STYLE_LINEAR), 24);
}

TEST(ExposureContrastRenderer, anyOtherStyleGetsNone)
{
    EXPECT_EQ(makeExposureContrastRenderer(gradeOp(static_cast<ExposureContrastOp::Style>(3), {0, 1, 1})), nullptr);
}

TEST(ExposureContrastRenderer, everyChannelIsOnItsOwn)
{
    for (const auto style :
         {ExposureContrastOp::STYLE_VIDEO, ExposureContrastOp::STYLE_LOG, ExposureContrastOp::STYLE_LINEAR}) {
        EXPECT_EQ(makeExposureContrastRenderer(gradeOp(style, {0, 1, 1}))->getChannelUse(), ChannelUse::ApartAndSlow);
    }
}

TEST(ExposureContrastRenderer, linearIsAPowerAroundThePivot)
{
    expectLight(ExposureContrastOp::STYLE_LINEAR, [](float x) { return x; });
}

TEST(ExposureContrastRenderer, videoWorksOnVideoLight)
{
    expectLight(ExposureContrastOp::STYLE_VIDEO, [](float x) { return runtimePow(x, 0.5464481f); });
}

TEST(ExposureContrastRenderer, logarithmicIsAScaleAndAShift)
{
    for (const DepthPair& depths : kDepthPairs) {
        for (const Grade& grade : kGrades) {
            const float inMax = fullScaleOf(depths.in);
            const float outMax = fullScaleOf(depths.out);
            const double code =
                std::log10(std::max(grade.pivot, 0.001) / 0.9) * 0.29325513196480935 + 0.6695992179863147;
            const float pivot = static_cast<float>(std::max(code, 0.0));
            const float shift =
                static_cast<float>(grade.exposure * 0.3010299956639812 * 0.29325513196480935 * double{inMax});
            const float t = shift - pivot * inMax;
            const float alphaScale = outMax / inMax;
            const float s = static_cast<float>(std::max(grade.contrast, 0.001)) * alphaScale;
            const float b = t * s + pivot * outMax;
            expectKernel(*makeExposureContrastRenderer(gradeOp(depths, ExposureContrastOp::STYLE_LOG, grade)), inMax,
                         [&](const Pixel& in) {
                             return Pixel{in[0] * s + b, in[1] * s + b, in[2] * s + b, in[3] * alphaScale};
                         });
        }
    }
}

TEST(ExposureContrastRenderer, linearWithoutEffectGivesTheValuesBack)
{
    const auto renderer = makeExposureContrastRenderer(gradeOp(ExposureContrastOp::STYLE_LINEAR, {0, 1, 0.18}));
    for (const float v : {0.f, 0.18f, 0.9f, 1.f, -0.3f, 12.5f}) {
        const Pixel out = render(*renderer, {v, v, v, v});
        EXPECT_NEAR(out[0], v, std::abs(v) * 3e-7f);
        EXPECT_EQ(out[3], v);
    }
}

TEST(ExposureContrastRenderer, aStopDoublesLinearLightAndContrastKeepsThePivot)
{
    const auto stop = makeExposureContrastRenderer(gradeOp(ExposureContrastOp::STYLE_LINEAR, {1, 1, 0.18}));
    EXPECT_NEAR(render(*stop, {0.25f, 0.5f, 1.f, 1.f})[0], 0.5f, 1e-6f);
    const auto contrast = makeExposureContrastRenderer(gradeOp(ExposureContrastOp::STYLE_LINEAR, {0, 2, 0.18}));
    const Pixel out = render(*contrast, {0.18f, 0.36f, 0.09f, 1.f});
    EXPECT_NEAR(out[0], 0.18f, 2e-5f);
    EXPECT_NEAR(out[1], 0.72f, 5e-5f);
    EXPECT_NEAR(out[2], 0.045f, 5e-6f);
}

TEST(ExposureContrastRenderer, aNaNExposureOrContrastOrPivotGivesDefinedPixels)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // Contrast and pivot take their floors.
    const auto floors = makeExposureContrastRenderer(gradeOp(ExposureContrastOp::STYLE_LINEAR, {0, nan, nan}));
    const auto same = makeExposureContrastRenderer(gradeOp(ExposureContrastOp::STYLE_LINEAR, {0, 0.001, 0.001}));
    const Pixel pixel = {0.25f, 0.5f, 1.f, 0.75f};
    EXPECT_EQ(render(*floors, pixel), render(*same, pixel));
    const auto exposure = makeExposureContrastRenderer(gradeOp(ExposureContrastOp::STYLE_LINEAR, {nan, 1.5, 1}));
    EXPECT_EQ(render(*exposure, pixel), (Pixel{0.f, 0.f, 0.f, 0.75f}));
}

TEST(ExposureContrastRenderer, staticValuesAreNoDynamicOnes)
{
    ExposureContrastOp op = gradeOp(ExposureContrastOp::STYLE_LINEAR, {0.5, 1.5, 0.18});
    EXPECT_FALSE(makeExposureContrastRenderer(op)->hasDynamicValues());
    op.getExposure()->makeDynamic();
    EXPECT_TRUE(makeExposureContrastRenderer(op)->hasDynamicValues());

    const ExposureContrastOp other = gradeOp(ExposureContrastOp::STYLE_LINEAR, {0.5, 1.5, 0.18});
    other.getContrast()->makeDynamic();
    EXPECT_TRUE(makeExposureContrastRenderer(other)->hasDynamicValues());

    const ExposureContrastOp bypassed = gradeOp(ExposureContrastOp::STYLE_LINEAR, {0.5, 1.5, 0.18});
    bypassed.getBypass()->makeDynamic();
    EXPECT_TRUE(makeExposureContrastRenderer(bypassed)->hasDynamicValues());
}

TEST(ExposureContrastRenderer, theValuesOfALineAreThoseReadAtItsStart)
{
    const ExposureContrastOp op = gradeOp(ExposureContrastOp::STYLE_LINEAR, {1, 1, 1});
    op.getExposure()->makeDynamic();
    const auto renderer = makeExposureContrastRenderer(op);
    const DynamicValues values = renderer->readDynamicValues();
    EXPECT_EQ(values.exposure, 1.0);
    EXPECT_EQ(values.contrast, 1.0);
    EXPECT_FALSE(values.isBypassed);

    op.getExposure()->set(3.0);
    const Pixel in = {1.f, 0.5f, 0.25f, 1.f};
    Pixel out{};
    renderer->render({in.data(), out.data(), 1, 0, 0, values});
    EXPECT_EQ(out, (Pixel{2.f, 1.f, 0.5f, 1.f}));
}

TEST(ExposureContrastRenderer, aChangeBetweenTwoApplicationsShowsWithoutANewFinalize)
{
    const BitDepth f = BIT_DEPTH_32f;
    auto* op = new ExposureContrastOp(f, f);
    op->getExposure()->makeDynamic();
    op->getContrast()->makeDynamic();
    Color::Transform transform;
    transform.getOpList().append(op);
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);

    const Pixel in = {0.25f, 0.5f, 1.f, 1.f};
    const auto apply = [&] {
        Pixel out{};
        renderer.apply(in.data(), out.data(), ROI(0, 0, 1, 1), 0, 0);
        return out;
    };
    EXPECT_EQ(apply(), in);
    op->getExposure()->set(1.0);
    EXPECT_EQ(apply(), (Pixel{0.5f, 1.f, 2.f, 1.f}));
    op->getContrast()->set(2.0);
    EXPECT_EQ(apply(), (Pixel{scalarPow(0.5f, 2.f), scalarPow(1.f, 2.f), scalarPow(2.f, 2.f), 1.f}));
}

TEST(ExposureContrastRenderer, aChangeOfAStaticOpAfterFinalizeDoesNotShow)
{
    const BitDepth f = BIT_DEPTH_32f;
    auto* op = new ExposureContrastOp(f, f);
    Color::Transform transform;
    transform.getOpList().append(op);
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);
    op->getExposure()->set(1.0);
    const Pixel in = {0.25f, 0.5f, 1.f, 1.f};
    Pixel out{};
    renderer.apply(in.data(), out.data(), ROI(0, 0, 1, 1), 0, 0);
    EXPECT_EQ(out, in);
}
