#include "morvane/finalize.h"
#include "tests/pixels/rendering.h"

#include <algorithm>
#include <map>
#include <set>

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;
using Twin::Kernel;

std::string pairName(PixelFormat in, PixelFormat out) { return std::string(pfToStr(in)) + " to " + pfToStr(out); }

class FormatPairs : public testing::TestWithParam<OpCase>
{};

TEST_P(FormatPairs, giveTheBitsOfTheScalarTwin)
{
    const ROI roi(0, 0, 131, 2);
    const TransformPtr transform = makeTransform(GetParam());
    Twin::Processors twins(GetParam().ops);
    Random random(20150142);
    Differences differences;
    for (const auto& [in, out] : sampled(formatPairsOf(GetParam()), GetParam().name.size())) {
        Image source(in, roi);
        fillRandom(source, random);
        differences.add(pairName(in, out), differenceFromTwin(twins, transform, source, out));
    }
    EXPECT_TRUE(differences.areNone());
}

INSTANTIATE_TEST_SUITE_P(AllOpCases, FormatPairs, testing::ValuesIn(allOpCases()),
                         [](const auto& oneCase) { return oneCase.param.name; });

/// Counts of what the cases above reach. A range keeps both clamps into an integer destination unless its limits lie
/// beyond an integer source, and it always scales between an integer and a float depth; 22 formats are integers, and
/// 124 pairs of them have one depth.
TEST(OpCases, reachEveryKernelWithEveryFormatThatItCanMeet)
{
    std::map<Kernel, std::set<std::pair<PixelFormat, PixelFormat>>> alone;
    std::map<Kernel, std::set<PixelFormat>> first;
    std::map<Kernel, std::set<PixelFormat>> last;
    std::set<Kernel> middle;
    for (const OpCase& one : allOpCases()) {
        Twin::Processors twins(one.ops);
        for (const auto& [in, out] : formatPairsOf(one)) {
            const Twin::Processor processor = twins.between(in, out);
            const auto& renderers = processor.renderers();
            for (size_t i = 0; i < renderers.size(); ++i) {
                if (renderers[i].isBypassed) continue;
                const Kernel kernel = renderers[i].kernel;
                if (renderers.size() == 1)
                    alone[kernel].insert({in, out});
                else if (i == 0)
                    first[kernel].insert(in);
                else if (i + 1 == renderers.size())
                    last[kernel].insert(out);
                else
                    middle.insert(kernel);
            }
        }
    }

    const size_t all = 32;
    const size_t integers = 22;
    const size_t floats = 10;
    struct Reach
    {
        Kernel kernel;
        size_t alone;
        size_t first;
        size_t last;
        size_t middle;
    };
    std::vector<Reach> reaches = {{Kernel::RANGE_SCALE_MIN, integers * all + floats * floats, all, floats, 1},
                                  {Kernel::RANGE_SCALE_MAX, integers * all + floats * floats, all, floats, 1},
                                  {Kernel::RANGE_SCALE, integers * all, integers, 0, 0},
                                  {Kernel::RANGE_MIN_MAX, 124 + floats * floats, floats, floats, 1},
                                  {Kernel::RANGE_MIN, 124 + floats * floats, floats, floats, 1},
                                  {Kernel::RANGE_MAX, 124 + floats * floats, floats, floats, 1}};
    // All others take any depth.
    for (int i = 0; i <= static_cast<int>(Kernel::FUNCTION_HSV_TO_RGB); ++i) {
        const Kernel kernel = static_cast<Kernel>(i);
        const bool isAbove =
            std::any_of(reaches.begin(), reaches.end(), [&](const Reach& reach) { return reach.kernel == kernel; });
        if (!isAbove) reaches.push_back({kernel, all * all, all, all, 1});
    }
    EXPECT_EQ(reaches.size(), 39U);
    for (const Reach& reach : reaches) {
        SCOPED_TRACE("kernel " + std::to_string(static_cast<int>(reach.kernel)));
        EXPECT_EQ(alone[reach.kernel].size(), reach.alone);
        EXPECT_EQ(first[reach.kernel].size(), reach.first);
        EXPECT_EQ(last[reach.kernel].size(), reach.last);
        EXPECT_EQ(middle.count(reach.kernel), reach.middle);
    }
}

TEST(Bypass, takesEffectAndEndsWithoutAnotherFinalize)
{
    const ROI roi(0, 0, 131, 2);
    Random random(7);
    Image source(PF_RGBA_16i, roi);
    fillRandom(source, random);
    const OpCase& bypassed = opCaseNamed("bypassedBetween");
    OpCase rendered = bypassed;
    rendered.ops[1] = Twin::with(Twin::Bypass::OFF, rendered.ops[1]);

    const TransformPtr transform = finalizedCopy(makeTransform(bypassed), PF_RGBA_16i, PF_RGB_32f);
    DynamicProperty bypass(DynamicProperty::BYPASS);
    for (const double value : {0.0, 1.0, 0.0}) {
        bypass.setValue(value);
        ASSERT_TRUE(transform->setDynamicProperty(bypass));
        const OpCase& wanted = value > 0 ? bypassed : rendered;
        Image expected(PF_RGB_32f, roi);
        Image actual = expected;
        const Twin::Processor twin(wanted.ops, PF_RGBA_16i, PF_RGB_32f);
        apply(twin, source, expected);
        apply(transform, source, actual);
        EXPECT_EQ(difference(expected, actual, twin.nans()), "") << value;
    }
}

TEST(ExposureAndContrast, takeEffectWithoutAnotherFinalize)
{
    const ROI roi(0, 0, 131, 2);
    Random random(11);
    Image source(PF_RGBA_16f, roi);
    fillRandom(source, random);
    struct Change
    {
        double exposure;
        double contrast;
    };
    for (const char* name :
         {"ecVideoDynamic", "ecLogDynamic", "ecLinearDynamic", "exposedBetween", "exposedLogBetween"}) {
        OpCase wanted = opCaseNamed(name);
        const TransformPtr transform = finalizedCopy(makeTransform(wanted), PF_RGBA_16f, PF_RGB_32f);
        DynamicProperty exposure(DynamicProperty::EXPOSURE);
        DynamicProperty contrast(DynamicProperty::CONTRAST);
        for (const Change& change : {Change{1.5, 1}, Change{-3, 0.4}, Change{0, 1}, Change{0.1, 0}, Change{0, -1}}) {
            exposure.setValue(change.exposure);
            contrast.setValue(change.contrast);
            ASSERT_TRUE(transform->setDynamicProperty(exposure));
            ASSERT_TRUE(transform->setDynamicProperty(contrast));
            for (Twin::Op& op : wanted.ops) {
                if (auto* exposed = std::get_if<Twin::ExposureContrastOp>(&op)) {
                    exposed->exposure = change.exposure;
                    exposed->contrast = change.contrast;
                }
            }
            Image expected(PF_RGB_32f, roi);
            Image actual = expected;
            const Twin::Processor twin(wanted.ops, PF_RGBA_16f, PF_RGB_32f);
            apply(twin, source, expected);
            apply(transform, source, actual);
            EXPECT_EQ(difference(expected, actual, twin.nans()), "") << name << ", exposure " << change.exposure;
        }
    }
}

} // namespace
} // namespace PixelTest
