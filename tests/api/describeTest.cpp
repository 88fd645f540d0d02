#include "tests/api/descriptionRecorder.h"
#include "tests/api/hostTools.h"

#include <algorithm>

using namespace Morvane;

namespace {

std::vector<std::string> describe(const TransformPtr& transform)
{
    DescriptionRecorder recorder;
    EXPECT_TRUE(succeeds(transform->describe(recorder)));
    return recorder.lines();
}

using Lines = std::vector<std::string>;

} // namespace

TEST(describe, tellsTheTransformAndEachOp)
{
    const TransformPtr transform = fromText(
        document("<Description>first</Description><Description>second</Description>"
                 "<InputDescriptor>scene</InputDescriptor><OutputDescriptor>display</OutputDescriptor>"
                 "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\" bypass=\"true\"><Description>mix</Description>"
                 "<Array dim=\"3 3 3\">0.1 -2 3e10 0 1 0 1e-7 0 0.3333333333</Array></Matrix>"
                 "<Matrix inBitDepth=\"32f\" outBitDepth=\"8i\">"
                 "<Array dim=\"3 4 3\">255 0 0 0.5 0 255 0 0 0 0 255 -1</Array></Matrix>"
                 "<Range inBitDepth=\"8i\" outBitDepth=\"8i\"><minInValue>16</minInValue><maxInValue>235</maxInValue>"
                 "<minOutValue>0.125</minOutValue><maxOutValue>255</maxOutValue></Range>",
                 "name=\"look\" inverseOf=\"b\""));
    EXPECT_EQ(describe(transform), (Lines{
                                       "[Transform",
                                       "  Input Descriptor = scene",
                                       "  Output Descriptor = display",
                                       "  Nickname = look",
                                       "  Inverse Of = b",
                                       "  Description = first",
                                       "  Description = second",
                                       "  [Matrix",
                                       "    Bypass = true",
                                       "    Description = mix",
                                       "    Array Row 1 = 0.1 -2 3e+10 0",
                                       "    Array Row 2 = 0 1 0 0",
                                       "    Array Row 3 = 1e-07 0 0.33333334 0",
                                       "    Array Row 4 = 0 0 0 1",
                                       "  ]",
                                       "  [Matrix",
                                       "    Array Row 1 = 255 0 0 0",
                                       "    Array Row 2 = 0 255 0 0",
                                       "    Array Row 3 = 0 0 255 0",
                                       "    Array Row 4 = 0 0 0 255",
                                       "    Offsets = 0.5 0 -1 0",
                                       "  ]",
                                       "  [Range",
                                       "    Min Input Value = 16",
                                       "    Min Output Value = 0.125",
                                       "    Max Input Value = 235",
                                       "    Max Output Value = 255",
                                       "  ]",
                                       "]",
                                   }));
}

TEST(describe, leavesOutLimitsThatAreNotSet)
{
    const std::string head = "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">";
    EXPECT_EQ(describe(fromText(document(head + "<minInValue>0</minInValue><minOutValue>0.1</minOutValue></Range>" +
                                         head + "<maxInValue>1</maxInValue><maxOutValue>1</maxOutValue></Range>"))),
              (Lines{
                  "[Transform",
                  "  Input Descriptor = ",
                  "  Output Descriptor = ",
                  "  Nickname = ",
                  "  [Range",
                  "    Min Input Value = 0",
                  "    Min Output Value = 0.1",
                  "  ]",
                  "  [Range",
                  "    Max Input Value = 1",
                  "    Max Output Value = 1",
                  "  ]",
                  "]",
              }));
}

TEST(describe, tellsNumbersThatAreNotFinite)
{
    const float values[9] = {0, 0, 0, 0, 1.f / 0.f, 0, 0, 0, -1.f / 0.f};
    const float offsets[3] = {};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(CreateMatrixTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, values, offsets, false, transform)));
    EXPECT_EQ(describe(transform), (Lines{
                                       "[Transform",
                                       "  Input Descriptor = ",
                                       "  Output Descriptor = ",
                                       "  Nickname = none",
                                       "  [Matrix",
                                       "    Array Row 1 = 0 0 0 0",
                                       "    Array Row 2 = 0 inf 0 0",
                                       "    Array Row 3 = 0 0 -inf 0",
                                       "    Array Row 4 = 0 0 0 1",
                                       "  ]",
                                       "]",
                                   }));
}

TEST(describe, showsAnOffsetOfAlphaAlone)
{
    const TransformPtr transform = makeScale({1, 1, 1, 1}, {0, 0, 0, 0.5f});
    const Lines lines = describe(transform);
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_EQ(lines[9], "    Offsets = 0 0 0 0.5");
}

TEST(describe, tellsThe1DLut)
{
    const std::vector<float> values(65536, 0.5f);
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create1DLutTransformFromFloat(BIT_DEPTH_10i, BIT_DEPTH_16f, 1024, values.data(), values.data(),
                                                       values.data(), HALF_FLAGS_NONE, transform)));
    EXPECT_EQ(describe(transform), (Lines{
                                       "[Transform",
                                       "  Input Descriptor = ",
                                       "  Output Descriptor = ",
                                       "  Nickname = none",
                                       "  [LUT 1D",
                                       "    Interpolation = default",
                                       "    Hue Adjustment = none",
                                       "    Array Dimension = 1024",
                                       "  ]",
                                       "]",
                                   }));
    ASSERT_TRUE(
        succeeds(Create1DLutTransformFromFloat(BIT_DEPTH_16f, BIT_DEPTH_16f, 65536, values.data(), values.data(),
                                               values.data(), HALF_FLAGS_HALF_DOMAIN_RAW_HALFS, transform)));
    EXPECT_EQ(describe(transform), (Lines{
                                       "[Transform",
                                       "  Input Descriptor = ",
                                       "  Output Descriptor = ",
                                       "  Nickname = none",
                                       "  [LUT 1D",
                                       "    Interpolation = default",
                                       "    Half Domain = true",
                                       "    Raw Halfs = true",
                                       "    Hue Adjustment = none",
                                       "    Array Dimension = 65536",
                                       "  ]",
                                       "]",
                                   }));
}

TEST(describe, tellsTheInverse1DLut)
{
    const float values[3] = {0, 1, 2};
    TransformPtr transform;
    ASSERT_TRUE(succeeds(Create1DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 3, values, values, values,
                                                       HALF_FLAGS_NONE, transform)));
    ASSERT_TRUE(succeeds(transform->inverse(transform)));
    const Lines lines = describe(transform);
    const auto section = std::find(lines.begin(), lines.end(), "  [Inverse LUT 1D");
    ASSERT_NE(section, lines.end());
    EXPECT_EQ(Lines(section, lines.end()), (Lines{
                                               "  [Inverse LUT 1D",
                                               "    Interpolation = default",
                                               "    Hue Adjustment = none",
                                               "    Array Dimension = 3",
                                               "  ]",
                                               "]",
                                           }));
}

TEST(describe, tellsThe3DLutAndTheDither)
{
    const float values[24] = {};
    TransformPtr lut;
    ASSERT_TRUE(succeeds(Create3DLutTransformFromFloat(BIT_DEPTH_32f, BIT_DEPTH_32f, 2, values, lut)));
    TransformPtr dither;
    ASSERT_TRUE(succeeds(CreateDitherTransform(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i, dither)));
    TransformPtr both;
    ASSERT_TRUE(succeeds(concatenateTransforms(lut, dither, both)));
    EXPECT_EQ(describe(both), (Lines{
                                  "[Transform",
                                  "  Input Descriptor = ",
                                  "  Output Descriptor = ",
                                  "  Nickname = none",
                                  "  [LUT 3D",
                                  "    Interpolation = default",
                                  "    Array Dimension = 2",
                                  "  ]",
                                  "  [Dither",
                                  "  ]",
                                  "]",
                              }));
}

TEST(describe, tellsTheExposureOfThisMoment)
{
    TransformPtr transform;
    ASSERT_TRUE(succeeds(createStockTransform(STOCK_TRANSFORM_RAW, transform)));
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    exposure.setValue(-1.3);
    ASSERT_TRUE(succeeds(transform->setDynamicProperty(exposure)));
    EXPECT_EQ(describe(transform),
              (Lines{
                  "[Transform",
                  "  Input Descriptor = ",
                  "  Output Descriptor = ",
                  "  Nickname = Stock Raw Transform",
                  "  Description = Identity transform with linear dynamic exposure contrast controls.",
                  "  [Exposure/Contrast",
                  "    E/C Style = linear",
                  "    Exposure = -1.3",
                  "    Contrast = 1",
                  "    Pivot = 1",
                  "  ]",
                  "  [Matrix",
                  "    Array Row 1 = 1 0 0 0",
                  "    Array Row 2 = 0 1 0 0",
                  "    Array Row 3 = 0 0 1 0",
                  "    Array Row 4 = 0 0 0 1",
                  "  ]",
                  "]",
              }));
}

TEST(describe, emptyTransformHasItsOwnFieldsAlone)
{
    EXPECT_EQ(describe(fromText(document(""))), (Lines{
                                                    "[Transform",
                                                    "  Input Descriptor = ",
                                                    "  Output Descriptor = ",
                                                    "  Nickname = ",
                                                    "]",
                                                }));
}

TEST(describe, passesWhatTheHostThrows)
{
    class Throwing : public Transform::ContentCallbacks
    {
    public:
        void beginSection(const char*) override { throw 7; }
        void endSection() override {}
        void addField(const char*, const char*) override {}
    };
    Throwing callbacks;
    EXPECT_THROW(makeScale({1, 1, 1, 1})->describe(callbacks), int);
}

TEST(describe, goesOnWhenTheHostLetsGoOfTheTransform)
{
    class LettingGo : public DescriptionRecorder
    {
    public:
        explicit LettingGo(TransformPtr& transform) : m_transform(transform) {}
        void beginSection(const char* title) override
        {
            m_transform.reset();
            DescriptionRecorder::beginSection(title);
        }

    private:
        TransformPtr& m_transform;
    };
    const auto load = [] {
        return fromText(document("<Matrix inBitDepth='32f' outBitDepth='32f'><Array dim='3 3 3'>"
                                 "2 0 0 0 2 0 0 0 2</Array></Matrix>"));
    };
    TransformPtr transform = load();
    LettingGo callbacks(transform);
    EXPECT_TRUE(succeeds(transform->describe(callbacks)));
    EXPECT_FALSE(transform);
    EXPECT_EQ(callbacks.lines(), describe(load()));
}
