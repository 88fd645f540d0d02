#include "morvane/finalize.h"
#include "tests/pixels/rendering.h"

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
    Random random(20150142);
    Differences differences;
    for (const PixelFormat in : Twin::allFormats()) {
        Image source(in, roi);
        fillRandom(source, random);
        for (const PixelFormat out : Twin::allFormats())
            differences.add(pairName(in, out), differenceFromTwin(GetParam(), transform, source, out));
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
        for (const PixelFormat in : Twin::allFormats()) {
            for (const PixelFormat out : Twin::allFormats()) {
                const Twin::Processor processor(one.ops, in, out);
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
    for (const Reach& reach :
         {Reach{Kernel::SCALE, all * all, all, all, 1}, Reach{Kernel::SCALE_WITH_OFFSET, all * all, all, all, 1},
          Reach{Kernel::MATRIX, all * all, all, all, 1}, Reach{Kernel::MATRIX_WITH_OFFSET, all * all, all, all, 1},
          Reach{Kernel::RANGE_SCALE_MIN_MAX, all * all, all, all, 1},
          Reach{Kernel::RANGE_SCALE_MIN, integers * all + floats * floats, all, floats, 1},
          Reach{Kernel::RANGE_SCALE_MAX, integers * all + floats * floats, all, floats, 1},
          Reach{Kernel::RANGE_SCALE, integers * all, integers, 0, 0},
          Reach{Kernel::RANGE_MIN_MAX, 124 + floats * floats, floats, floats, 1},
          Reach{Kernel::RANGE_MIN, 124 + floats * floats, floats, floats, 1},
          Reach{Kernel::RANGE_MAX, 124 + floats * floats, floats, floats, 1}}) {
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
        apply(Twin::Processor(wanted.ops, PF_RGBA_16i, PF_RGB_32f), source, expected);
        apply(transform, source, actual);
        EXPECT_EQ(difference(expected, actual), "") << value;
    }
}

} // namespace
} // namespace PixelTest
