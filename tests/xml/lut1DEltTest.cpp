#include "xml/lut1DElt.h"

#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"

#include <cmath>
#include <limits>

using namespace Color;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Pair;

namespace {

const char* const kElements[] = {"LUT1D", "InverseLUT1D"};

/// What messages call the op of an element.
std::string typeOf(const std::string& element) { return element == "LUT1D" ? "LUT 1D" : "Inverse LUT 1D"; }

std::string array(const std::string& dim, const std::string& numbers)
{
    return "<Array dim='" + dim + "'>" + numbers + "</Array>";
}

/// The array begins on line 3.
std::string document(const std::string& element, const std::string& content, const std::string& attributes = "",
                     const std::string& version = "1.6")
{
    return Ctf::document(Ctf::op(element, content, attributes), version);
}

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const Lut1DOp& getLut(const ColorTransformPtr& transform) { return Ctf::getOp<Lut1DOp>(transform); }

Array::Values valuesOf(const std::string& text) { return getLut(Ctf::read(text)).getArray().getValues(); }

} // namespace

TEST(Lut1DElt, threeComponentsAreTakenAsTheyStand)
{
    const auto transform = Ctf::read(Ctf::document("<LUT1D inBitDepth='8i' outBitDepth='10i'>" +
                                                   array("2 3", "0 10, 20\n1000 1010 1023") + "</LUT1D>"));
    const Lut1DOp& op = getLut(transform);
    EXPECT_EQ(op.getOpType(), OP_LUT_1D);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getArray().getLength(), 2u);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
    EXPECT_EQ(op.getArray().getValues(), (Array::Values{0, 10, 20, 1000, 1010, 1023}));
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_DEFAULT);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_NONE);
    EXPECT_EQ(op.getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
}

TEST(Lut1DElt, oneComponentBecomesThreeEqualOnes)
{
    for (const char* element : kElements) {
        const auto transform = Ctf::read(document(element, array("3 1", "9 0.5 0")));
        const Lut1DOp& op = getLut(transform);
        EXPECT_EQ(op.getArray().getLength(), 3u);
        EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
        EXPECT_EQ(op.getArray().getValues(), (Array::Values{9, 9, 9, 0.5f, 0.5f, 0.5f, 0, 0, 0}));
    }
    const auto values = valuesOf(document("LUT1D", array("1024 1", repeated("0.25 ", 1024))));
    EXPECT_EQ(values, Array::Values(3 * 1024, 0.25f));
    Ctf::expectReadFails(document("LUT1D", array("1024 1", repeated("0.25 ", 3072))), 0x302000c,
                         "Expected 1024x1 Array, found additional values in 'LUT 1D' line 3: test.ctf");
}

TEST(Lut1DElt, takesEveryFormOfNumber)
{
    const auto values = valuesOf(document("LUT1D", array("2 3", "nan -INF Infinity NANX -0 1e-3")));
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], -std::numeric_limits<float>::infinity());
    EXPECT_EQ(values[2], std::numeric_limits<float>::infinity());
    EXPECT_TRUE(std::isnan(values[3]));
    EXPECT_TRUE(std::signbit(values[4]));
    EXPECT_EQ(values[5], 1e-3f);
    Ctf::expectReadFails(document("LUT1D", array("2 3", "0 INFX 1")), 0x302000e,
                         "Illegal values '0 INFX 1' in 'LUT 1D' line 3: test.ctf");
}

TEST(Lut1DElt, refusesOtherFormsOfDim)
{
    for (const std::string element : kElements) {
        for (const std::string dim :
             {"1024", "1024 2", "1024 4", "1024 0", "0 3", "-2 3", "2 3 3", "2.5 3", "4294967297 3", ""}) {
            Ctf::expectReadFails(document(element, array(dim, "0 1")), 0x302000a,
                                 "Illegal '" + typeOf(element) + "' dimensions '" + dim + "' line 3: test.ctf");
        }
    }
}

TEST(Lut1DElt, refusesAWrongNumberOfValues)
{
    Ctf::expectReadFails(document("LUT1D", array("2 3", "1 2 3 4 5")), 0x302000b,
                         "Expected 2x3 Array values, found 5 in 'LUT 1D' line 3: test.ctf");
    Ctf::expectReadFails(document("LUT1D", array("2 3", "")), 0x302000b,
                         "Expected 2x3 Array values, found 0 in 'LUT 1D' line 3: test.ctf");
    // A length of values is enough for one component only.
    Ctf::expectReadFails(document("LUT1D", array("2 3", "1 2")), 0x302000b,
                         "Expected 2x3 Array values, found 2 in 'LUT 1D' line 3: test.ctf");
    Ctf::expectReadFails(document("LUT1D", array("3 1", "\n1 2\n")), 0x302000b,
                         "Expected 3x1 Array values, found 2 in 'LUT 1D' line 5: test.ctf");
    Ctf::expectReadFails(document("LUT1D", array("2 3", "1 2 3\n4 5 6 7")), 0x302000c,
                         "Expected 2x3 Array, found additional values in 'LUT 1D' line 4: test.ctf");
}

TEST(Lut1DElt, messagesTellTheLengthOfAnInverseTwice)
{
    for (const char* components : {"1", "3"}) {
        Ctf::expectReadFails(document("InverseLUT1D", array(std::string("5 ") + components, "1 2")), 0x302000b,
                             "Expected 5x5 Array values, found 2 in 'Inverse LUT 1D' line 3: test.ctf");
        Ctf::expectReadFails(document("InverseLUT1D", array(std::string("2 ") + components, "1 2 3 4 5 6 7")),
                             0x302000c,
                             "Expected 2x2 Array, found additional values in 'Inverse LUT 1D' line 3: test.ctf");
    }
}

TEST(Lut1DElt, absurdSizesTakeNoMemory)
{
    Ctf::expectReadFails(document("LUT1D", array("2000000000 3", "1 2 3")), 0x302000b,
                         "Expected 2000000000x3 Array values, found 3 in 'LUT 1D' line 3: test.ctf");
    Ctf::expectReadFails(document("LUT1D", array("2147483647 1", "1")), 0x302000b,
                         "Expected 2147483647x1 Array values, found 1 in 'LUT 1D' line 3: test.ctf");
    Ctf::expectReadFails(document("InverseLUT1D", array("2000000000 3", "1 2 3")), 0x302000b,
                         "Expected 2000000000x2000000000 Array values, found 3 in 'Inverse LUT 1D' line 3: test.ctf");
}

TEST(Lut1DElt, withoutArrayTheOpRefusesItself)
{
    for (const std::string element : kElements) {
        Ctf::expectReadFails(document(element, ""), 0x2010004,
                             "Array content empty: Array content for " + typeOf(element) + " illegal",
                             "COLOR:TRANSFORM:ALL");
        Ctf::expectReadFails(document(element, "", " name='film'"), 0x2010004,
                             "Array content empty: Array content for film illegal", "COLOR:TRANSFORM:ALL");
    }
}

TEST(Lut1DElt, finalizingAnArrayThatWasNeverSizedFails)
{
    Xml::Reader::ReadContext context;
    Xml::Reader::TransformElt parent("ProcessList", context);
    Xml::Reader::Lut1DElt forward("LUT1D", parent, context);
    Xml::Reader::InvLut1DElt inverse("InverseLUT1D", parent, context);
    Ctf::expectFailure(failureOf([&] { forward.finalize(0); }), 0x302000d, "Array state incomplete");
    Ctf::expectFailure(failureOf([&] { inverse.finalize(3); }), 0x302000d, "Array state incomplete");
}

TEST(Lut1DElt, takesOneArrayOnly)
{
    for (const char* element : kElements) {
        const LogRecorder recorder;
        const auto values = valuesOf(document(element, array("2 1", "1 0") + array("x", "7")));
        EXPECT_EQ(values, (Array::Values{1, 1, 1, 0, 0, 0}));
        EXPECT_THAT(recorder.lines(),
                    ElementsAre(Pair(LOG_LEVEL_DEBUG, EndsWith("test.ctf: : Only one Color::Array allowed per op"))));
    }
}

TEST(Lut1DElt, readsTheInterpolation)
{
    for (const char* element : kElements) {
        const std::string content = array("2 1", "1 0");
        const auto interpolationOf = [&](const char* name) {
            const LogRecorder recorder;
            const auto transform = Ctf::read(document(element, content, std::string(" interpolation='") + name + "'"));
            EXPECT_TRUE(recorder.lines().empty());
            return getLut(transform).getInterpolation();
        };
        EXPECT_EQ(interpolationOf("linear"), Lut1DOp::INTERPOLATION_LINEAR);
        EXPECT_EQ(interpolationOf("cubic"), Lut1DOp::INTERPOLATION_CUBIC);
    }
}

TEST(Lut1DElt, logsAnUnknownInterpolationAndKeepsTheDefault)
{
    for (const std::string element : kElements) {
        for (const std::string name : {"Linear", "CUBIC", "default", " linear", "tetrahedral", ""}) {
            const LogRecorder recorder;
            const auto transform = Ctf::read(document(element, array("2 1", "1 0"), " interpolation='" + name + "'"));
            EXPECT_EQ(getLut(transform).getInterpolation(), Lut1DOp::INTERPOLATION_DEFAULT);
            EXPECT_THAT(
                recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_DEBUG, "COLOR:XML:READER: Illegal 'Interpolation' attribute '" + name +
                                                      "' in '" + typeOf(element) + "' line 2: test.ctf")));
        }
    }
}

TEST(Lut1DElt, halfDomainMayBeTrueAlone)
{
    for (const std::string element : kElements) {
        for (const std::string value : {"false", "", "1", " true", "no"}) {
            Ctf::expectReadFails(document(element, array("2 1", "1 0"), " halfDomain='" + value + "'"), 0x302000f,
                                 "Illegal '" + typeOf(element) + "' halfDomain attribute '" + value +
                                     "' line 2: test.ctf");
        }
    }
}

TEST(Lut1DElt, rawHalfsMayBeTrueAlone)
{
    for (const std::string element : kElements) {
        for (const std::string value : {"false", "", "no", "true "}) {
            Ctf::expectReadFails(document(element, array("2 1", "1 0"), " rawHalfs='" + value + "'"), 0x3020010,
                                 "Illegal '" + typeOf(element) + "' rawHalfs attribute '" + value +
                                     "' line 2: test.ctf");
        }
    }
}

TEST(Lut1DElt, lengthOfAHalfDomainIsTheOpsAffair)
{
    for (const std::string element : kElements) {
        // The array is read to its end, and refused with the op.
        Ctf::expectReadFails(
            document(element, array("2 1", "1 0") + "<Description/>\n", " halfDomain='TRUE'"), 0x204000e,
            "2 entries found, 65536 req'd for halfDomain lut " + typeOf(element) + ": " + typeOf(element) + " ",
            "COLOR:TRANSFORM:LUT_1D");
        Ctf::expectReadFails(document(element, array("2 1", "1"), " halfDomain='true'"), 0x302000b,
                             std::string("Expected ") + (element == "LUT1D" ? "2x1" : "2x2") +
                                 " Array values, found 1 in '" + typeOf(element) + "' line 3: test.ctf");
    }
}

TEST(Lut1DElt, readsAHalfDomainInTheOrderOfTheFile)
{
    std::string numbers;
    for (int i = 0; i < 65536; ++i)
        numbers += std::to_string(i) + "\n";
    const auto transform = Ctf::read(document("LUT1D", array("65536 1", numbers), " HALFDOMAIN='True'"));
    const Lut1DOp& op = getLut(transform);
    EXPECT_TRUE(op.isHalfDomain());
    EXPECT_FALSE(op.hasRawHalfs());
    EXPECT_EQ(op.getArray().getLength(), Lut1DOp::kHalfDomainLength);
    for (std::size_t i = 0; i < 65536; ++i) {
        ASSERT_EQ(op.getArray().getValues()[3 * i], static_cast<float>(i));
        ASSERT_EQ(op.getArray().getValues()[3 * i + 2], static_cast<float>(i));
    }
}

TEST(Lut1DElt, rawHalfsAreTheBitsOfHalfs)
{
    // 1, -2, the largest and the smallest, 0.5 with a part that is no bit, infinity.
    const auto transform =
        Ctf::read(document("LUT1D", array("2 3", "15360 49152 31743\n1 14336.75 31744"), " rawHalfs='True'"));
    const Lut1DOp& op = getLut(transform);
    EXPECT_TRUE(op.hasRawHalfs());
    EXPECT_FALSE(op.isHalfDomain());
    EXPECT_EQ(op.getArray().getValues(),
              (Array::Values{1, -2, 65504, 0x1p-24F, 0.5f, std::numeric_limits<float>::infinity()}));
    // One component is converted before it is made three.
    EXPECT_EQ(valuesOf(document("LUT1D", array("2 1", "0 15360"), " rawHalfs='true'")),
              (Array::Values{0, 0, 0, 1, 1, 1}));
}

TEST(Lut1DElt, ofARawHalfBeyond16BitsTheLowOnesCount)
{
    const auto values = valuesOf(document("LUT1D",
                                          array("4 3", "80896 -17408 65535\n-1 65536 4294982656\n"
                                                       "-0.9 1e30 -3e38\nnan inf -inf"),
                                          " rawHalfs='true'"));
    ASSERT_EQ(values.size(), 12u);
    EXPECT_EQ(values[0], 1.f);          // 0x13c00
    EXPECT_EQ(values[1], -1.f);         // 0xbc00 below 0x10000
    EXPECT_TRUE(std::isnan(values[2])); // 0xffff
    EXPECT_TRUE(std::isnan(values[3])); // 0xffff below 0x10000
    EXPECT_EQ(values[4], 0.f);          // 0x10000
    EXPECT_EQ(values[5], 1.f);          // 0x100003c00
    for (std::size_t i = 6; i < 12; ++i)
        EXPECT_EQ(values[i], 0.f) << i;
}

TEST(Lut1DElt, rawHalfsOfAnInverseStayAsTheyAre)
{
    const auto transform = Ctf::read(document("InverseLUT1D", array("3 1", "3 2 1"), " rawHalfs='true'"));
    EXPECT_TRUE(getLut(transform).hasRawHalfs());
    EXPECT_EQ(getLut(transform).getArray().getValues(), (Array::Values{3, 3, 3, 2, 2, 2, 1, 1, 1}));
}

TEST(Lut1DElt, hueAdjustIsSkippedUnread)
{
    for (const char* version : {"", "1.2", "1.3"}) {
        for (const char* value : {"dw3", "no such thing"}) {
            const auto transform =
                Ctf::read(document("LUT1D", array("2 1", "1 0"), std::string(" hueAdjust='") + value + "'", version));
            EXPECT_EQ(getLut(transform).getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
        }
    }
}

TEST(Lut1DElt_1_4, readsHueAdjust)
{
    for (const char* version : {"1.35", "1.4", "1.6"}) {
        for (const char* value : {"dw3", "DW3"}) {
            const auto transform =
                Ctf::read(document("LUT1D", array("2 1", "1 0"), std::string(" hueAdjust='") + value + "'", version));
            EXPECT_EQ(getLut(transform).getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
        }
        for (const std::string value : {"", "none", "dw3 "}) {
            Ctf::expectReadFails(document("LUT1D", array("2 1", "1 0"), " hueAdjust='" + value + "'", version),
                                 0x3020025, "Illegal 'LUT 1D' hueAdjust attribute '" + value + "' line 2: test.ctf");
        }
    }
}

TEST(InvLut1DElt, knowsNoHueAdjust)
{
    const auto transform = Ctf::read(document("InverseLUT1D", array("2 1", "1 0"), " hueAdjust='?'"));
    EXPECT_EQ(getLut(transform).getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
}

TEST(InvLut1DElt, isExactAndSetUpAfterReading)
{
    // Red rises and turns back once, green falls after a flat start, blue is flat.
    const auto transform =
        Ctf::read(Ctf::document("<InverseLUT1D inBitDepth='8i' outBitDepth='32f'>" +
                                array("4 3", "0 255 7\n100 255 7\n50 9 7\n200 3 7") + "</InverseLUT1D>"));
    const auto& op = Ctf::getOp<InvLut1DOp>(transform);
    EXPECT_EQ(op.getOpType(), OP_INVERSE_LUT_1D);
    EXPECT_EQ(op.getStyle(), InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getArray().getValues(), (Array::Values{0, 255, 7, 100, 255, 7, 100, 9, 7, 200, 3, 7}));
    EXPECT_TRUE(op.getRun(0).isIncreasing);
    EXPECT_EQ(op.getRun(0).start, 0u);
    EXPECT_EQ(op.getRun(0).end, 3u);
    EXPECT_FALSE(op.getRun(1).isIncreasing);
    EXPECT_EQ(op.getRun(1).start, 1u);
    EXPECT_EQ(op.getRun(1).end, 3u);
    EXPECT_FALSE(op.getRun(2).isIncreasing);
    EXPECT_EQ(op.getRun(2).start, 0u);
    EXPECT_EQ(op.getRun(2).end, 0u);
}
