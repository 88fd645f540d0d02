#include "tests/api/hostTools.h"

#include <cstdlib>
#include <iostream>
#include <memory>

using namespace Morvane;

namespace {

const std::array<float, 4> kPixel = {0.25f, 0.5f, 0.75f, 1.f};

MorvaneStatus finalizeWith(const TransformPtr& source, RendererFlags renderers, TransformPtr& result,
                           OptimizerFlags optimizer = OPTIMIZER_DEFAULT,
                           ResolveFlags resolve = RESOLVE_BROADCAST_MONITOR)
{
    return finalize(source, PF_RGBA_32f, PF_RGBA_32f, renderers, optimizer, resolve, result);
}

/// What apply answers to a transform that has no CPU renderer.
::testing::AssertionResult hasNoRenderer(const TransformPtr& transform)
{
    std::array<float, 4> pixel{};
    return failsWith(transform->apply(pixel.data(), ROI(0, 0, 1, 1), pixel.data()), 0x6010001,
                     "No 'CPU' renderer available");
}

/// Makes every CPU renderer fail while it lives: a success then shows that none was made.
struct NoCPURenderer : ScopedEnvironment
{
    NoCPURenderer() : ScopedEnvironment("MORVANE_CPU_RENDERER", "GPU") {}
};

const char* const kGPUChoice = "A GPU renderer not a valid choice";

} // namespace

TEST(finalize, worksOnTheVeryObjectOfTheHost)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    TransformPtr second;
    second = transform;
    EXPECT_EQ(transform->getInputPixelFormat(), PF_UNKNOWN);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_UNKNOWN);
    EXPECT_TRUE(hasNoRenderer(transform));
    TransformPtr result;
    ASSERT_TRUE(succeeds(finalize(transform, PF_RGBA_8i, PF_BGR_16f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                                  RESOLVE_BROADCAST_MONITOR, result)));
    EXPECT_EQ(result.get(), transform.get());
    EXPECT_EQ(transform.getUseCount(), 3);
    EXPECT_EQ(second->getInputPixelFormat(), PF_RGBA_8i);
    EXPECT_EQ(second->getOutputPixelFormat(), PF_BGR_16f);
}

TEST(finalize, sourceMayBeTheResult)
{
    TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, transform)));
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, transform)));
    EXPECT_EQ(transform.getUseCount(), 1);
    EXPECT_EQ(applyToPixel(transform, kPixel), (std::array<float, 4>{0.5f, 1.f, 1.5f, 1.f}));
}

TEST(finalize, leavesTheRendererAloneForTheSameValues)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    TransformPtr result;
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result)));
    result.reset();
    {
        const NoCPURenderer none;
        EXPECT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result)));
    }
    EXPECT_EQ(result.get(), transform.get());
    EXPECT_EQ(applyToPixel(transform, kPixel), (std::array<float, 4>{0.5f, 1.f, 1.5f, 1.f}));
}

TEST(finalize, eachOtherValueMakesANewRenderer)
{
    using Change = MorvaneStatus (*)(const TransformPtr&, TransformPtr&);
    const Change changes[] = {
        [](const TransformPtr& transform, TransformPtr& result) {
            return finalize(transform, PF_RGB_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                            RESOLVE_BROADCAST_MONITOR, result);
        },
        [](const TransformPtr& transform, TransformPtr& result) {
            return finalize(transform, PF_RGBA_32f, PF_RGB_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                            RESOLVE_BROADCAST_MONITOR, result);
        },
        [](const TransformPtr& transform, TransformPtr& result) {
            return finalizeWith(transform, RendererFlags(RENDERER_CPU | 4u), result);
        },
        [](const TransformPtr& transform, TransformPtr& result) {
            return finalizeWith(transform, RENDERER_CPU, result, OPTIMIZER_OFF);
        },
        [](const TransformPtr& transform, TransformPtr& result) {
            return finalizeWith(transform, RENDERER_CPU, result, OPTIMIZER_DEFAULT, RESOLVE_GRAPHICS_MONITOR);
        },
    };
    for (const Change change : changes) {
        const TransformPtr transform = makeScale({2, 2, 2, 1});
        TransformPtr result;
        ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result)));
        result.reset();
        {
            const NoCPURenderer none;
            EXPECT_TRUE(failsWith(change(transform, result), 0x4010004, kGPUChoice));
        }
        EXPECT_EQ(result.get(), transform.get());
        EXPECT_TRUE(hasNoRenderer(transform));
        EXPECT_TRUE(succeeds(change(transform, result)));
        EXPECT_EQ(result.get(), transform.get());
    }
}

TEST(finalize, storesTheFormatsAlsoWhenItFails)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    const NoCPURenderer none;
    EXPECT_TRUE(failsWith(finalizeForCPU(transform, PF_RGB_8i, PF_RGB_16i), 0x4010004, kGPUChoice));
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGB_8i);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_RGB_16i);
}

TEST(finalize, failedOneIsTriedAgainWithTheSameValues)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    {
        const NoCPURenderer none;
        EXPECT_FALSE(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f));
    }
    EXPECT_TRUE(hasNoRenderer(transform));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, kPixel)[0], 0.5f);
}

TEST(finalize, withoutRenderersSucceedsAndAllowsNoApply)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    TransformPtr result;
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_NONE, result)));
    EXPECT_EQ(result.get(), transform.get());
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_32f);
    EXPECT_TRUE(hasNoRenderer(transform));
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result)));
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_NONE, result)));
    EXPECT_TRUE(hasNoRenderer(transform));
}

TEST(finalize, nullTransformFailsAndLeavesTheResult)
{
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(finalizeWith(TransformPtr(), RENDERER_CPU, result), 0x4010002, "Transform null"));
    EXPECT_EQ(result.get(), before.get());
}

TEST(finalize, gpuFailsWithoutAnAdaptor)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    TransformPtr result;
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result)));
    EXPECT_TRUE(failsWith(finalizeWith(transform, RENDERER_GPU, result), 0x6010001, "No 'GPU' renderer available"));
    EXPECT_TRUE(hasNoRenderer(transform));
    EXPECT_TRUE(failsWith(finalizeWith(transform, RENDERER_CPU | RENDERER_GPU, result), 0x6010001,
                          "No 'GPU' renderer available"));
    EXPECT_TRUE(hasNoRenderer(transform));
}

TEST(finalize, gpuFailsWithAnAdaptorTooWhileThereIsNoRenderer)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    transform->setGPUAdaptor(GPUAdaptorPtr(new TestAdaptor));
    TransformPtr result;
    EXPECT_TRUE(failsWith(finalizeWith(transform, RENDERER_CPU | RENDERER_GPU, result), 0x6010001,
                          "No 'GPU' renderer available"));
    EXPECT_TRUE(hasNoRenderer(transform));
}

TEST(finalize, cpuRendererFollowsTheEnvironment)
{
    struct Case
    {
        const char* value;
        ErrorId code;
        const char* message;
    };
    const Case cases[] = {
        {"CPU", 0, ""},
        {"OCIO", 0x6010001, "No 'OCIO' renderer available"},
        {"GPU", 0x4010004, kGPUChoice},
        {"OCIO_GPU", 0x4010004, kGPUChoice},
        {"gpu", 0, ""},
        {"GPU ", 0, ""},
        {"", 0, ""},
    };
    for (const Case& entry : cases) {
        const ScopedEnvironment environment("MORVANE_CPU_RENDERER", entry.value);
        const TransformPtr transform = makeScale({2, 2, 2, 1});
        const MorvaneStatus status = finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f);
        if (entry.code == 0) {
            ASSERT_TRUE(succeeds(status)) << entry.value;
            EXPECT_EQ(applyToPixel(transform, kPixel)[0], 0.5f) << entry.value;
        } else {
            EXPECT_TRUE(failsWith(status, entry.code, entry.message)) << entry.value;
            EXPECT_TRUE(hasNoRenderer(transform)) << entry.value;
        }
    }
}

TEST(finalize, gpuRendererFollowsTheEnvironment)
{
    struct Case
    {
        const char* value;
        ErrorId code;
        const char* message;
    };
    const Case cases[] = {
        {"CPU", 0x4010004, "A CPU renderer not a valid choice"},
        {"OCIO", 0x4010004, "A CPU renderer not a valid choice"},
        {"GPU", 0x6010001, "No 'GPU' renderer available"},
        {"OCIO_GPU", 0x4010004, "A OCIO GPU renderer not a valid choice"},
        {"cpu", 0x6010001, "No 'GPU' renderer available"},
    };
    for (const Case& entry : cases) {
        const ScopedEnvironment environment("MORVANE_GPU_RENDERER", entry.value);
        const TransformPtr transform = makeScale({2, 2, 2, 1});
        TransformPtr result;
        EXPECT_TRUE(failsWith(finalizeWith(transform, RENDERER_CPU | RENDERER_GPU, result), entry.code, entry.message))
            << entry.value;
        EXPECT_TRUE(hasNoRenderer(transform)) << entry.value;
    }
}

TEST(finalize, formatSettersFinalizeAnewWithTheOtherValues)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    TransformPtr second;
    second = transform;
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    ASSERT_TRUE(succeeds(transform->setInputPixelFormat(PF_RGBA_8i)));
    EXPECT_EQ(second->getInputPixelFormat(), PF_RGBA_8i);
    EXPECT_EQ(second->getOutputPixelFormat(), PF_RGBA_32f);
    const unsigned char source[4] = {51, 102, 0, 255};
    float destination[4] = {};
    ASSERT_TRUE(succeeds(second->apply(source, ROI(0, 0, 1, 1), destination)));
    EXPECT_FLOAT_EQ(destination[0], 0.4f);
    EXPECT_FLOAT_EQ(destination[1], 0.8f);
    EXPECT_EQ(destination[3], 1.f);

    ASSERT_TRUE(succeeds(transform->setOutputPixelFormat(PF_BGRA_8i)));
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_8i);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_BGRA_8i);
    unsigned char bytes[4] = {};
    ASSERT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 1, 1), bytes)));
    EXPECT_EQ(bytes[2], 102);
    EXPECT_EQ(bytes[1], 204);

    ASSERT_TRUE(succeeds(transform->setPixelFormats(PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, kPixel)[2], 1.5f);
}

TEST(finalize, formatSettersDoNothingForThePresentFormats)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    {
        const NoCPURenderer none;
        EXPECT_TRUE(succeeds(transform->setInputPixelFormat(PF_RGBA_32f)));
        EXPECT_TRUE(succeeds(transform->setOutputPixelFormat(PF_RGBA_32f)));
        EXPECT_TRUE(succeeds(transform->setPixelFormats(PF_RGBA_32f, PF_RGBA_32f)));
    }
    EXPECT_EQ(applyToPixel(transform, kPixel)[0], 0.5f);
}

TEST(finalize, failingFormatSetterDropsTheRenderer)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    {
        const NoCPURenderer none;
        EXPECT_TRUE(failsWith(transform->setPixelFormats(PF_RGBA_8i, PF_RGBA_8i), 0x4010004, kGPUChoice));
    }
    EXPECT_TRUE(hasNoRenderer(transform));
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_8i);
}

TEST(finalize, formatSettersStoreTheFormatsOfATransformThatIsNotFinalized)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    EXPECT_TRUE(succeeds(transform->setPixelFormats(PF_RGBA_32f, PF_RGB_8i)));
    EXPECT_EQ(transform->getInputPixelFormat(), PF_RGBA_32f);
    EXPECT_EQ(transform->getOutputPixelFormat(), PF_RGB_8i);
    EXPECT_TRUE(hasNoRenderer(transform));
}

TEST(finalize, leavesTheOpsOfTheHostAsTheyAre)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGB_8i, PF_RGB_10i)));
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_32f);
}

TEST(finalize, leavesOutWhatIsBypassed)
{
    const TransformPtr transform = fromText(document("<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\" bypass=\"true\">"
                                                     "<Array dim=\"3 3 3\">9 0 0 0 9 0 0 0 9</Array></Matrix>"
                                                     "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">"
                                                     "<Array dim=\"3 3 3\">2 0 0 0 2 0 0 0 2</Array></Matrix>"));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, kPixel), (std::array<float, 4>{0.5f, 1.f, 1.5f, 1.f}));
}

TEST(finalize, transformWithoutOpsPassesPixelsOn)
{
    const TransformPtr transform = fromText(document(""));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, kPixel), kPixel);
}

// The optimizer.

TEST(finalize, anOptimizerThresholdOf0FailsAndLeavesNoRenderer)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    TransformPtr result;
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result)));
    const char* message = "Attempt to apply Null optimizer action";
    for (const OptimizerFlags flags : {OptimizerFlags{0}, OPTIMIZER_KEEP_DYNAMIC}) {
        EXPECT_TRUE(failsWith(finalizeWith(transform, RENDERER_CPU, result, flags), 0x4010006, message));
        EXPECT_TRUE(hasNoRenderer(transform));
    }
    EXPECT_TRUE(failsWith(finalizeWith(transform, RENDERER_NONE, result, 0), 0x4010006, message));
}

TEST(finalize, anIdentityStillScalesBetweenDepths)
{
    const TransformPtr transform = makeScale({1, 1, 1, 1});
    EXPECT_EQ((convertPixel<uint16_t, uint8_t>(transform, PF_RGBA_8i, PF_RGBA_16i, {0, 1, 128, 255})),
              (std::array<uint16_t, 4>{0, 257, 32896, 65535}));
}

TEST(finalize, lutsMergeOnlyWhereTheThresholdAllowsIt)
{
    // Together a curve with its tip at 0.5, from which it falls by 2 per unit on both sides.
    const char* text = "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"2 1\">0 0.5</Array></LUT1D>"
                       "<LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"5 1\">0 1 0 0 0</Array></LUT1D>";
    const TransformPtr transform = fromText(document(text));
    TransformPtr result;
    for (const OptimizerFlags flags : {OPTIMIZER_OFF, OPTIMIZER_DEFAULT}) {
        ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result, flags)));
        EXPECT_EQ(applyToPixel(transform, {0.5f, 0.5f, 0.5f, 1})[0], 1.f);
    }
    // 0.5 lies half-way between two of the 65536 samples, both of which are below the tip.
    ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result, OPTIMIZER_LUT1D)));
    EXPECT_NEAR(applyToPixel(transform, {0.5f, 0.5f, 0.5f, 1})[0], 1.f - 1.f / 65535.f, 1e-6f);
}

TEST(finalize, aNeutralDynamicOperatorIsLeftOutUnlessItIsKept)
{
    for (const bool isKept : {false, true}) {
        TransformPtr transform;
        ASSERT_TRUE(succeeds(createStockTransform(STOCK_TRANSFORM_RAW, transform)));
        TransformPtr result;
        ASSERT_TRUE(succeeds(finalizeWith(transform, RENDERER_CPU, result,
                                          isKept ? OPTIMIZER_DEFAULT | OPTIMIZER_KEEP_DYNAMIC : OPTIMIZER_DEFAULT)));
        DynamicProperty exposure(DynamicProperty::EXPOSURE);
        exposure.setValue(1.0);
        ASSERT_TRUE(succeeds(transform->setDynamicProperty(exposure)));
        EXPECT_EQ(applyToPixel(transform, kPixel)[0], isKept ? 0.5f : 0.25f);
    }
}

namespace {

/// In a new process, which loads the library anew. Ends it.
[[noreturn]] void finalizeAndReport()
{
    TransformPtr result;
    const MorvaneStatus status = finalizeWith(makeScale({2, 2, 2, 1}), RENDERER_CPU, result);
    std::cerr << (status ? "success" : status.getErrorMessage()) << std::endl;
    std::_Exit(0);
}

} // namespace

TEST(finalize, theOptimizerValueOfTheEnvironmentIsReadWhenTheLibraryIsLoaded)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const ScopedEnvironment environment("MORVANE_OPTIMIZER_VALUE", "0");
    TransformPtr result;
    EXPECT_TRUE(succeeds(finalizeWith(makeScale({2, 2, 2, 1}), RENDERER_CPU, result)));
    EXPECT_EXIT(finalizeAndReport(), ::testing::ExitedWithCode(0), "Attempt to apply Null optimizer action");
}
