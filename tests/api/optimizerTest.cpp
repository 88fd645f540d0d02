#include "tests/api/hostTools.h"

using namespace Morvane;

namespace {

/// Each action as type@index title score, one to a line.
class ActionRecorder : public OptimizerCallback
{
public:
    void addAction(OptimizerActionType type, unsigned index, const char* opTypeName, unsigned score) override
    {
        text +=
            std::to_string(type) + "@" + std::to_string(index) + " " + opTypeName + " " + std::to_string(score) + "\n";
    }

    std::string text;
};

/// The titles of a transform's operators, one to a line.
class TitleRecorder : public Transform::ContentCallbacks
{
public:
    void beginSection(const char* title) override
    {
        if (m_level++ == 1) text += std::string(title) + "\n";
    }
    void endSection() override { --m_level; }
    void addField(const char*, const char*) override {}

    std::string text;

private:
    int m_level = 0;
};

std::string titlesOf(const TransformPtr& transform)
{
    TitleRecorder titles;
    EXPECT_TRUE(succeeds(transform->describe(titles)));
    return titles.text;
}

constexpr const char* kDepths = " inBitDepth='32f' outBitDepth='32f'";

std::string matrix(const std::string& factor, const std::string& attributes = "")
{
    return "<Matrix" + std::string(kDepths) + attributes + "><Array dim='3 3 3'>" + factor + " 0 0 0 " + factor +
           " 0 0 0 " + factor + "</Array></Matrix>";
}

/// A bypassed matrix, a range that only clips, and two matrices.
TransformPtr chain()
{
    return fromText(document(matrix("7", " bypass='true'") + "<Range" + kDepths +
                             "><minInValue>0</minInValue><minOutValue>0</minOutValue></Range>" + matrix("2") +
                             matrix("3")));
}

MorvaneStatus optimize(const TransformPtr& source, OptimizerFlags flags, ActionRecorder& actions, TransformPtr& flat,
                       TransformPtr& optimized)
{
    return optimizeTransform(source, flags, RESOLVE_BROADCAST_MONITOR, actions, flat, optimized);
}

} // namespace

TEST(optimizeTransform, givesTheListsBeforeAndAfterAndTheActions)
{
    const TransformPtr source = chain();
    TransformPtr flat, optimized;
    ActionRecorder actions;
    ASSERT_TRUE(succeeds(optimize(source, OPTIMIZER_DEFAULT, actions, flat, optimized)));
    EXPECT_EQ(actions.text, "3@1 Matrix 95\n");
    EXPECT_EQ(titlesOf(flat), "Range\nMatrix\nMatrix\n");
    EXPECT_EQ(titlesOf(optimized), "Range\nMatrix\n");
    EXPECT_EQ(titlesOf(source), "Matrix\nRange\nMatrix\nMatrix\n");
}

TEST(optimizeTransform, actsAsFarAsTheFlagsAllow)
{
    TransformPtr flat, optimized;
    ActionRecorder actions;
    ASSERT_TRUE(succeeds(optimize(chain(), OPTIMIZER_REMOVE, actions, flat, optimized)));
    EXPECT_EQ(actions.text, "");
    EXPECT_EQ(titlesOf(optimized), titlesOf(flat));
}

TEST(optimizeTransform, tellsWhatWasAtThePlaceOfEachAction)
{
    const TransformPtr source =
        fromText(document(matrix("1") + "<Range" + kDepths +
                          "><minInValue>0</minInValue><minOutValue>0</minOutValue><maxInValue>1</maxInValue>"
                          "<maxOutValue>1</maxOutValue></Range><LUT1D" +
                          kDepths + "><Array dim='3 1'>0 0.25 1</Array></LUT1D>" + matrix("2") + matrix("0.5")));
    TransformPtr flat, optimized;
    ActionRecorder actions;
    ASSERT_TRUE(succeeds(optimize(source, OPTIMIZER_DEFAULT, actions, flat, optimized)));
    EXPECT_EQ(actions.text, "1@0 Matrix 100\n2@0 Range 99\n3@1 Matrix 95\n1@1 Matrix 100\n");
    EXPECT_EQ(titlesOf(optimized), "LUT 1D\n");
}

TEST(optimizeTransform, rendersWhatTheSourceDoes)
{
    TransformPtr flat, optimized;
    ActionRecorder actions;
    ASSERT_TRUE(succeeds(optimize(chain(), OPTIMIZER_DEFAULT, actions, flat, optimized)));
    const std::array<float, 4> pixel = {0.25f, -1.f, 2.f, 0.5f};
    for (const TransformPtr& transform : {flat, optimized}) {
        ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
        EXPECT_EQ(applyToPixel(transform, pixel), (std::array<float, 4>{1.5f, 0.f, 12.f, 0.5f}));
    }
}

TEST(optimizeTransform, leavesTheSourceFinalized)
{
    const TransformPtr source = chain();
    ASSERT_TRUE(succeeds(finalizeForCPU(source, PF_RGBA_32f, PF_RGBA_32f)));
    TransformPtr flat, optimized;
    ActionRecorder actions;
    ASSERT_TRUE(succeeds(optimize(source, OPTIMIZER_DEFAULT, actions, flat, optimized)));
    EXPECT_EQ(applyToPixel(source, {0.25f, -1.f, 2.f, 0.5f}), (std::array<float, 4>{1.5f, 0.f, 12.f, 0.5f}));
}

TEST(optimizeTransform, keepsDynamicOperatorsWhenAsked)
{
    TransformPtr source;
    ASSERT_TRUE(succeeds(createStockTransform(STOCK_TRANSFORM_RAW, source)));
    TransformPtr flat, optimized;
    ActionRecorder kept, removed;
    ASSERT_TRUE(succeeds(optimize(source, OPTIMIZER_DEFAULT | OPTIMIZER_KEEP_DYNAMIC, kept, flat, optimized)));
    EXPECT_EQ(titlesOf(flat), "Exposure/Contrast\nMatrix\n");
    EXPECT_EQ(kept.text, "1@1 Matrix 100\n");
    EXPECT_EQ(titlesOf(optimized), "Exposure/Contrast\n");
    ASSERT_TRUE(succeeds(optimize(source, OPTIMIZER_DEFAULT, removed, flat, optimized)));
    EXPECT_EQ(removed.text, "1@0 Exposure/Contrast 100\n");
    EXPECT_EQ(titlesOf(optimized), "Matrix\n");
}

TEST(optimizeTransform, failuresLeaveTheResults)
{
    TransformPtr flat, optimized;
    ActionRecorder actions;
    EXPECT_TRUE(
        failsWith(optimize(TransformPtr(), OPTIMIZER_DEFAULT, actions, flat, optimized), 0x4010002, "Transform null"));
    EXPECT_TRUE(
        failsWith(optimize(chain(), 0, actions, flat, optimized), 0x4010006, "Attempt to apply Null optimizer action"));
    EXPECT_EQ(actions.text, "");
    EXPECT_FALSE(flat);
    EXPECT_FALSE(optimized);
}
