#include "renderer/CPURenderer.h"

#include "renderer/CPUMatrixOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/exception.h"
#include "utils/logging.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace Rendering;
using Color::MatrixOp;
using Color::RangeOp;

namespace {

using Rgba = std::array<float, 4>;

std::vector<std::string> loggedLines;
void recordLine(LogLevel, const char* text) { loggedLines.emplace_back(text); }

/// An unresolved reference, as far as the renderer looks.
class UnresolvedReference : public Color::Op
{
public:
    UnresolvedReference() : Op(BIT_DEPTH_32f, BIT_DEPTH_32f) {}
    Op* clone() const override { return new UnresolvedReference(*this); }
    Color::OpType getOpType() const override { return Color::OP_REFERENCE; }
    const std::string& getOpTypeName() const override
    {
        static const std::string name = "Reference";
        return name;
    }
    bool isUnresolved() const override { return true; }
};

template <class Call>
void expectFailure(Call&& call, ErrorId id, const std::string& message, const std::string& category)
{
    try {
        call();
        FAIL() << "no exception";
    } catch (const Color::Exception& exception) {
        EXPECT_EQ(exception.getId(), id);
        EXPECT_EQ(exception.getMessage(), message);
        EXPECT_NE(exception.getLogMessage().find(category + ": " + message), std::string::npos)
            << exception.getLogMessage();
    }
}

Rgba renderPixel(const Color::Transform& transform, Rgba pixel)
{
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);
    Rgba result{};
    renderer.apply(pixel.data(), result.data(), ROI(0, 0, 1, 1), 0, 0);
    return result;
}

/// Passes pixels on and switches an op off, as a host may while a line is being rendered.
class SwitchingRenderer : public VirtualRenderer
{
public:
    explicit SwitchingRenderer(const Color::Op& switched)
        : VirtualRenderer(MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f)), m_bypass(switched.getBypass())
    {}

    RendererType getType() const override { return RENDERER_SCALE; }

    void render(const PixelRun& run) const override
    {
        std::memmove(run.destination, run.source, std::size_t{run.width} * 4 * sizeof(float));
        m_bypass->set(true);
    }

private:
    Color::BypassPropertyPtr m_bypass;
};

MatrixOp* diagonal(float value) { return Color::makeDiagonalMatrix(BIT_DEPTH_32f, BIT_DEPTH_32f, value).release(); }

} // namespace

TEST(CPURenderer, isOfItsOwnKind) { EXPECT_EQ(CPURenderer().getType(), RENDERER_CODE_CPU); }

TEST(CPURenderer, refusesANullTransform)
{
    CPURenderer renderer;
    expectFailure([&] { renderer.finalize(nullptr, PF_RGBA_32f, PF_RGBA_32f); }, 0x4010002, "Transform null",
                  "COLOR:RENDERER:ALL");
}

TEST(CPURenderer, refusesAnUnresolvedReference)
{
    Color::Transform transform;
    transform.getOpList().append(new UnresolvedReference);
    CPURenderer renderer;
    expectFailure([&] { renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f); }, 0x4010005, "Unresolved transform",
                  "COLOR:RENDERER:ALL");
}

TEST(CPURenderer, refusesAStaticBypassThatWasLeftOverAndKeepsNoProcessor)
{
    Color::Transform transform;
    transform.getOpList().append(diagonal(2));
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);
    EXPECT_EQ(renderer.getRendererCount(), 1u);

    transform.getOpList().get(0)->getBypass()->set(true);
    expectFailure([&] { renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f); }, 0x4010008, "Unfinalized transform",
                  "COLOR:RENDERER:ALL");
    EXPECT_EQ(renderer.getRendererCount(), 0u);
}

TEST(CPURenderer, aRendererIndexBeyondTheEndIsRefused)
{
    Color::Transform transform;
    transform.getOpList().append(diagonal(2));
    CPURenderer renderer;
    expectFailure([&] { renderer.getRendererType(0); }, 0x401000a, "Invalid renderer index", "COLOR:RENDERER:ALL");
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);
    EXPECT_EQ(renderer.getRendererType(0), RENDERER_SCALE);
    expectFailure([&] { renderer.getRendererType(1); }, 0x401000a, "Invalid renderer index", "COLOR:RENDERER:ALL");
}

TEST(CPURenderer, leavesTheCallersTransformAlone)
{
    Color::Transform transform;
    transform.getOpList().append(diagonal(2));
    transform.getOpList().append(diagonal(3));
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGB_8i, PF_RGB_16i);
    EXPECT_EQ(transform.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(transform.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(static_cast<const MatrixOp*>(transform.getOpList().get(0))->getArray().getValues()[0], 2.f);
}

TEST(CPURenderer, opsAreFittedTo32fInsideAndToTheFormatsAtTheEnds)
{
    // 8i to 10i, then 10i to 12i: in the scale of the files, 2 * 1023/255 and 3 * 4095/1023.
    Color::Transform transform;
    auto* first = new MatrixOp(BIT_DEPTH_8i, BIT_DEPTH_10i);
    auto* second = new MatrixOp(BIT_DEPTH_10i, BIT_DEPTH_12i);
    for (const std::size_t i : {0u, 5u, 10u, 15u}) {
        first->getArray().setValue(i, first->getArray().getValues()[i] * 2);
        second->getArray().setValue(i, second->getArray().getValues()[i] * 3);
    }
    transform.getOpList().append(first);
    transform.getOpList().append(second);

    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_16i);
    const Rgba source = {0.1f, 0.05f, 0.0f, 0.15f};
    std::array<uint16_t, 4> result{};
    renderer.apply(source.data(), result.data(), ROI(0, 0, 1, 1), 0, 0);
    // 6 * 65535 * source: 39321.0, 19660.5, 0, 58981.5.
    EXPECT_NEAR(result[0], 39321, 1);
    EXPECT_NEAR(result[1], 19661, 1);
    EXPECT_EQ(result[2], 0);
    EXPECT_NEAR(result[3], 58982, 1);
}

TEST(CPURenderer, aRangeThatDoesNothingLeavesTheDepthChange)
{
    Color::Transform transform;
    transform.getOpList().append(new RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f));
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_16f);
    ASSERT_EQ(renderer.getRendererCount(), 1u);
    EXPECT_EQ(renderer.getRendererType(0), RENDERER_SCALE);
}

TEST(CPURenderer, withoutAnyOpNumbersPassUnscaled)
{
    CPURenderer renderer;
    renderer.finalize(std::make_unique<Color::Transform>().get(), PF_RGBA_8i, PF_RGBA_32f);
    EXPECT_EQ(renderer.getRendererType(0), RENDERER_SCALE);
    const std::array<uint8_t, 4> source = {0, 100, 200, 255};
    Rgba result{};
    renderer.apply(source.data(), result.data(), ROI(0, 0, 1, 1), 0, 0);
    EXPECT_EQ(result, (Rgba{0, 100, 200, 255}));
}

TEST(CPURenderer, renderersRunInTheOrderOfTheOps)
{
    Color::Transform transform;
    auto* addOne = new MatrixOp(BIT_DEPTH_32f, BIT_DEPTH_32f);
    for (uint32_t i = 0; i < 4; ++i) {
        addOne->setOffset(i, 1);
    }
    transform.getOpList().append(addOne);
    transform.getOpList().append(diagonal(10));
    EXPECT_EQ(renderPixel(transform, {1, 2, 3, 4}), (Rgba{20, 30, 40, 50}));
}

TEST(CPURenderer, aListLongerThanTheStackHoldsIsRenderedToo)
{
    Color::Transform transform;
    for (int i = 0; i < 50; ++i) {
        transform.getOpList().append(diagonal(i % 2 == 0 ? 2.f : 0.5f));
    }
    transform.getOpList().append(diagonal(3));
    EXPECT_EQ(renderPixel(transform, {1, 2, 3, 4}), (Rgba{3, 6, 9, 12}));
}

TEST(CPURenderer, aDynamicBypassIsHonouredWithoutAnotherFinalize)
{
    Color::Transform transform;
    auto* twice = diagonal(2);
    twice->getBypass()->makeDynamic();
    transform.getOpList().append(twice);
    transform.getOpList().append(diagonal(3));
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_32f, PF_RGBA_32f);
    const Rgba source = {1, 2, 3, 4};
    Rgba result{};
    renderer.apply(source.data(), result.data(), ROI(0, 0, 1, 1), 0, 0);
    EXPECT_EQ(result, (Rgba{6, 12, 18, 24}));
    twice->getBypass()->set(true);
    renderer.apply(source.data(), result.data(), ROI(0, 0, 1, 1), 0, 0);
    EXPECT_EQ(result, (Rgba{3, 6, 9, 12}));
}

TEST(CPURenderer, aValueThatChangesWithinALineIsHonouredFromTheNextLineOn)
{
    const std::unique_ptr<MatrixOp> twice(diagonal(2));
    twice->getBypass()->makeDynamic();
    TransformProcessor processor;
    processor.push_back(std::make_unique<SwitchingRenderer>(*twice));
    processor.push_back(makeMatrixRenderer(*twice));

    constexpr uint32_t width = 600; // more than the renderers take at once
    const std::vector<float> source(width * 2 * 4, 1.f);
    std::vector<float> result(source.size());
    renderImage(processor, {reinterpret_cast<const unsigned char*>(source.data()), width * 16, PF_RGBA_32f},
                {reinterpret_cast<unsigned char*>(result.data()), width * 16, PF_RGBA_32f}, ROI(0, 0, width, 2));
    const auto secondLine = result.begin() + width * 4;
    EXPECT_EQ(std::count(result.begin(), secondLine, 2.f), width * 4);
    EXPECT_EQ(std::count(secondLine, result.end(), 1.f), width * 4);
}

TEST(CPURenderer, startOffsetsWrapAt32Bits)
{
    // y * row step = 2^31 * 8 wraps to 0, so the region starts at the first row after all.
    Color::Transform transform;
    transform.getOpList().append(diagonal(2));
    CPURenderer renderer;
    renderer.finalize(&transform, PF_RGBA_16f, PF_RGBA_16f);
    const std::array<uint16_t, 4> source = {0x3c00, 0x4000, 0x3800, 0x0001};
    std::array<uint16_t, 4> result{};
    renderer.apply(source.data(), result.data(), ROI(0, 0x80000000u, 1, 1, 1, 1), 0, 0);
    EXPECT_EQ(result, (std::array<uint16_t, 4>{0x4000, 0x4400, 0x3c00, 0x0002}));
}

TEST(CPURenderer, theDumpNamesTheTransformAndEachOp)
{
    Color::Transform transform("id", "Two ops", {}, "", "");
    transform.getOpList().append(diagonal(2));
    transform.getOpList().append(new RangeOp(BIT_DEPTH_32f, BIT_DEPTH_32f));
    loggedLines.clear();
    const LoggerFunction previous = Color::exchangeLogger(recordLine);
    setenv("MORVANE_DUMP_CPU", "1", 1);
    CPURenderer().finalize(&transform, PF_RGB_8i, PF_RGB_10iP);
    setenv("MORVANE_DUMP_CPU", "", 1);
    CPURenderer().finalize(&transform, PF_RGB_8i, PF_RGB_10iP);
    unsetenv("MORVANE_DUMP_CPU");
    CPURenderer().finalize(&transform, PF_RGB_8i, PF_RGB_10iP);
    Color::exchangeLogger(previous);
    EXPECT_EQ(loggedLines, (std::vector<std::string>{"Transform Two ops", "Op Matrix: [8i, 32f]",
                                                     "Op Range: [32f, 10i]", "*********"}));
}
