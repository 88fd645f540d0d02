#include "tests/api/hostTools.h"

using namespace Morvane;

namespace {

/// Writes down everything that describe() tells, one line each, indented by depth of section.
class Recorder : public Transform::ContentCallbacks
{
public:
    void beginSection(const char* title) override
    {
        add(std::string("[") + title);
        m_indent += "  ";
    }

    void endSection() override
    {
        m_indent.resize(m_indent.size() - 2);
        add("]");
    }

    void addField(const char* label, const char* value) override { add(std::string(label) + " = " + value); }

    const std::vector<std::string>& lines() const { return m_lines; }

private:
    void add(const std::string& text) { m_lines.push_back(m_indent + text); }

    std::string m_indent;
    std::vector<std::string> m_lines;
};

std::vector<std::string> describe(const TransformPtr& transform)
{
    Recorder recorder;
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
