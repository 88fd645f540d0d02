#include "xml/halvorn1DReader.h"

#include "tests/utils/commaLocale.h"
#include "tests/xml/halvorn.h"
#include "tests/xml/temporaryDirectory.h"
#include "transform/lut1DOp.h"

#include <array>
#include <cmath>
#include <iterator>

using namespace Color;
using Halvorn::ramp;
using Halvorn::times;

namespace {

Lut1DOp read(const std::string& text, const std::string& fileName = "dir_to12/test.lut")
{
    Halvorn1DReader reader;
    Halvorn::read(reader, text, fileName);
    EXPECT_EQ(reader.getTransform()->getOpList().size(), 1u);
    return dynamic_cast<const Lut1DOp&>(*reader.getTransform()->getOpList().get(0));
}

/// Expects that reading fails with this reason.
void expectFails(const std::string& text, const std::string& reason)
{
    Halvorn::expectReadFails<Halvorn1DReader>(text, 0x3090002, "Error reading file: " + reason + " in test.lut",
                                              "COLOR:XML:HALVORN_1D_READER", "test.lut");
}

void expectSyntaxError(const std::string& text) { expectFails(text, "Syntax error reading LUT file"); }
void expectPrematureEnd(const std::string& text) { expectFails(text, "Premature EOF reading LUT file"); }

std::array<float, 3> entry(const Lut1DOp& op, std::size_t position)
{
    const auto& values = op.getArray().getValues();
    return {values.at(position * 3), values.at(position * 3 + 1), values.at(position * 3 + 2)};
}

using Entry = std::array<float, 3>;

} // namespace

TEST(Halvorn1DReader, bareLinesAreATableOf8Bits)
{
    const Lut1DOp op = read(ramp(256));
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getId(), "");
    EXPECT_EQ(op.getName(), "");
    EXPECT_EQ(op.getDescriptions(), Descriptions{});
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_DEFAULT);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_NONE);
    EXPECT_EQ(op.getArray().getLength(), 256u);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
    EXPECT_EQ(entry(op, 0), (Entry{0, 0, 0}));
    EXPECT_EQ(entry(op, 255), (Entry{255, 255, 255}));
}

TEST(Halvorn1DReader, readsAFile)
{
    Halvorn1DReader reader;
    reader.readFile(MORVANE_TEST_DATA "/halvorn/negative.lut");
    ASSERT_NE(reader.getTransform(), nullptr);
    EXPECT_FALSE(reader.getTransform()->getId().empty());
    const auto& op = dynamic_cast<const Lut1DOp&>(*reader.getTransform()->getOpList().get(0));
    EXPECT_EQ(entry(op, 0), (Entry{255, 255, 255}));
    EXPECT_EQ(entry(op, 254), (Entry{1, 1, 1}));
}

TEST(Halvorn1DReader, tablesAreThoseOfTheChannels)
{
    const std::string tables = times(256, "1\n") + times(256, "2\n") + times(256, "3\n");
    EXPECT_EQ(entry(read("LUT: 3 256\n" + tables), 255), (Entry{1, 2, 3}));
    EXPECT_EQ(entry(read("LUT: 4 256\n" + tables + times(256, "4\n")), 0), (Entry{1, 2, 3}));
    EXPECT_EQ(entry(read("LUT: 1 256\n" + ramp(256)), 7), (Entry{7, 7, 7}));
}

TEST(Halvorn1DReader, headerIsSpelledInAnyCase)
{
    EXPECT_EQ(entry(read("\n# comment\n lut:\t1  256\n" + ramp(256)), 7), (Entry{7, 7, 7}));
    expectSyntaxError("LUT:1 256\n" + ramp(256));
    expectSyntaxError("LUT 1 256\n" + ramp(256));
}

TEST(Halvorn1DReader, otherNumbersOfTablesFail)
{
    for (const char* header : {"LUT: 2 256", "LUT: 0 256", "LUT: 5 256", "LUT: -1 256", "LUT: x 256", "LUT: 1.5 256"})
        expectSyntaxError(header + ("\n" + ramp(768)));
}

TEST(Halvorn1DReader, lengthIsAtLeastOne)
{
    for (const char* header : {"LUT: 1 0", "LUT: 1 -256", "LUT: 1", "LUT: 3 x"})
        expectSyntaxError(header + ("\n" + ramp(256)));
}

TEST(Halvorn1DReader, lengthTellsTheDepths)
{
    const auto expectDepths = [](int length, BitDepth in, BitDepth out) {
        const Lut1DOp op = read("LUT: 1 " + std::to_string(length) + "\n" + ramp(length));
        EXPECT_EQ(op.getInBitDepth(), in) << length;
        EXPECT_EQ(op.getOutBitDepth(), out) << length;
        EXPECT_EQ(op.isHalfDomain(), in == BIT_DEPTH_16f) << length;
        EXPECT_EQ(entry(op, static_cast<std::size_t>(length) - 1)[1], static_cast<float>(length - 1));
    };
    expectDepths(256, BIT_DEPTH_8i, BIT_DEPTH_8i);
    expectDepths(1024, BIT_DEPTH_10i, BIT_DEPTH_10i);
    expectDepths(4096, BIT_DEPTH_12i, BIT_DEPTH_12i);
    expectDepths(65536, BIT_DEPTH_16f, BIT_DEPTH_16i);
}

TEST(Halvorn1DReader, otherLengthsHaveNoInputDepth)
{
    Halvorn::expectReadFails<Halvorn1DReader>("LUT: 1 33 1024\n" + ramp(33), 0x2010001,
                                              "'InBitDepth' attribute missing in LUT 1D", "COLOR:TRANSFORM:ALL",
                                              "test.lut");
}

TEST(Halvorn1DReader, depthFieldReplacesTheOutputDepth)
{
    const auto expectDepth = [](const std::string& field, BitDepth depth) {
        EXPECT_EQ(read("LUT: 1 256 " + field + "\n" + ramp(256), "lin_to10.lut").getOutBitDepth(), depth) << field;
    };
    expectDepth("256", BIT_DEPTH_8i);
    expectDepth("1024", BIT_DEPTH_10i);
    expectDepth("4096", BIT_DEPTH_12i);
    expectDepth("65536", BIT_DEPTH_16i);
    expectDepth("65536F", BIT_DEPTH_16f);
    expectDepth("65536f rest", BIT_DEPTH_16f);
    expectDepth("65536i", BIT_DEPTH_16i);
    expectDepth("65536 f", BIT_DEPTH_16i); // the letter is of another field
    expectDepth("1024f", BIT_DEPTH_10i);
    EXPECT_EQ(read("LUT: 1 1024 1024\n" + ramp(1024)).getOutBitDepth(), BIT_DEPTH_10i);
    for (const char* field : {"10", "0", "-256", "f", "65537", "99999999999999999999"})
        expectSyntaxError(std::string("LUT: 1 256 ") + field + "\n" + ramp(256));
}

TEST(Halvorn1DReader, fileNameTellsTheOutputDepthWhereTheHeaderDoesNot)
{
    const auto expectDepth = [](const std::string& name, BitDepth depth) {
        EXPECT_EQ(read("LUT: 1 256\n" + ramp(256), name).getOutBitDepth(), depth) << name;
        EXPECT_EQ(read(ramp(256), name).getOutBitDepth(), depth) << name;
    };
    expectDepth("10to8.lut", BIT_DEPTH_8i);
    expectDepth("lin_to10.lut", BIT_DEPTH_10i);
    expectDepth("8TO12i.lut", BIT_DEPTH_12i);
    expectDepth("8to16.lut", BIT_DEPTH_16i);
    expectDepth("8to16f.lut", BIT_DEPTH_16f);
    expectDepth("8to16F.LUT", BIT_DEPTH_16f);
    expectDepth("8to32f.lut", BIT_DEPTH_32f);
    // These tell nothing, and the length does.
    for (const char* name : {"8to32.lut", "8to9.lut", "8to.lut", "to", "8to-16.lut", "8to 16.lut", "a.lut", "", "t",
                             "tone8to16.lut", "16.lut", "dir_to16/a.lut"}) {
        expectDepth(name, BIT_DEPTH_8i);
    }
}

TEST(Halvorn1DReader, valuesOfAFloatTableAreHalfs)
{
    const Lut1DOp op = read("LUT: 1 65536 65536F\n" + ramp(65536));
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_TRUE(op.isHalfDomain());
    EXPECT_FALSE(op.hasRawHalfs());
    EXPECT_EQ(entry(op, 0x3c00)[0], 1.0F);
    EXPECT_EQ(entry(op, 0xc000)[1], -2.0F);
    EXPECT_EQ(entry(op, 0x7c00)[2], INFINITY);
    EXPECT_TRUE(std::isnan(entry(op, 0x7e00)[0]));
    EXPECT_EQ(entry(op, 1)[0], 0x1p-24F);
    // Of 32 bits the file tells whole numbers all the same.
    EXPECT_EQ(entry(read(times(256, "15360\n"), "8to32f.lut"), 0), (Entry{15360, 15360, 15360}));
    EXPECT_EQ(entry(read(times(256, "15360\n"), "8to16f.lut"), 0), (Entry{1, 1, 1}));
}

TEST(Halvorn1DReader, valuesKeep16Bits)
{
    const Lut1DOp op = read("1\n+2\n\t3 4\n65535\n65536\n-1\n70000\n5x\nx\n" + times(247, "0\n"));
    const float wanted[] = {1, 2, 3, 65535, 0, 65535, 4464, 5, 0};
    for (std::size_t i = 0; i < std::size(wanted); ++i)
        EXPECT_EQ(entry(op, i), (Entry{wanted[i], wanted[i], wanted[i]})) << i;
}

TEST(Halvorn1DReader, commentsAndEmptyLinesStandAnywhere)
{
    EXPECT_EQ(entry(read("# head\n\n" + ramp(128) + "\n # middle\n" + times(128, "9\n") + "\n#end\n \t\n"), 255),
              (Entry{9, 9, 9}));
}

TEST(Halvorn1DReader, everyFileThatEndsTooEarlyFails)
{
    expectPrematureEnd("");
    expectPrematureEnd("# comment\n\n");
    expectPrematureEnd("LUT: 1 256");
    expectPrematureEnd(ramp(255));
    expectPrematureEnd("LUT: 3 256\n" + ramp(767));
    expectPrematureEnd("LUT: 4 256\n" + ramp(768));
}

TEST(Halvorn1DReader, dataBehindTheTablesFails)
{
    expectSyntaxError(ramp(257));
    expectSyntaxError("LUT: 1 256\n" + ramp(256) + "text\n");
    expectSyntaxError("LUT: 3 256\n" + ramp(768) + "\n\n# comment\n0");
}

TEST(Halvorn1DReader, otherFirstLinesFail)
{
    for (const char* line : {"text", "-1", ".5", "\xef\xbb\xbf", "\xff\xfeL", "<ProcessList>"})
        expectSyntaxError(line + ("\n" + ramp(256)));
    expectSyntaxError(std::string(1, '\0') + ramp(256));
}

TEST(Halvorn1DReader, lengthBeyondEveryLutFailsAtOnce)
{
    expectFails("LUT: 1 16777217\n1\n", "Cannot allocate memory for LUT");
    expectFails("LUT: 3 2147483647\n1\n", "Cannot allocate memory for LUT");
    expectFails("LUT: 4 99999999999 65536F\n1\n", "Cannot allocate memory for LUT");
    expectPrematureEnd("LUT: 4 16777216\n1\n");
}

TEST(Halvorn1DReader, fileThatCannotBeOpenedFails)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("missing.lut");
    Halvorn1DReader reader;
    EXPECT_EQ(
        failureOf([&] { reader.readFile(path); }),
        (Failure{0x3090002, "COLOR:XML:HALVORN_1D_READER", "Error reading file: Cannot open LUT file in " + path}));
}

TEST(Halvorn1DReader, fileThatCannotBeReadFails)
{
    // A directory opens like a file.
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("");
    Halvorn1DReader reader;
    EXPECT_EQ(
        failureOf([&] { reader.readFile(path); }),
        (Failure{0x3090002, "COLOR:XML:HALVORN_1D_READER", "Error reading file: Unknown error for LUT in " + path}));
}

TEST(Halvorn1DReader, readsNoTextInMemory)
{
    Halvorn1DReader reader;
    EXPECT_EQ(failureOf([&] { reader.readBuffer(ramp(256).c_str()); }),
              (Failure{0x3090001, "COLOR:XML:HALVORN_1D_READER",
                       "Internal - Unsupported buffer parsing by Halvorn 1d-LUT reader"}));
}

TEST(Halvorn1DReader, failureLeavesNothingOfAFormerRead)
{
    Halvorn1DReader reader;
    for (const bool isFile : {true, false}) {
        Halvorn::read(reader, ramp(256), "test.lut");
        EXPECT_NE(reader.getTransform(), nullptr);
        EXPECT_FALSE(failureOf([&] { isFile ? reader.readFile("/no/such.lut") : reader.readBuffer(""); }) ==
                     kNoFailure);
        EXPECT_EQ(reader.getTransform(), nullptr);
    }
}

TEST(Halvorn1DReader, linesOfOtherSystemsAreGood)
{
    std::string text = "LUT: 1 256 1024\r\n";
    for (int i = 0; i < 256; ++i)
        text += std::to_string(i) + "\r\n";
    EXPECT_EQ(read(text).getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(entry(read(text), 255), (Entry{255, 255, 255}));
    // But a line of a carriage return alone is not empty.
    expectSyntaxError(text + "\r\n");
}

TEST(Halvorn1DReader, doesNotDependOnTheLocale)
{
    const CommaLocale locale;
    EXPECT_EQ(entry(read("LUT: 1 1024 1024\n" + ramp(1024)), 1023), (Entry{1023, 1023, 1023}));
}

TEST(Halvorn1DReader, fileCutAtAnyByteFailsOrReads)
{
    const std::string good = "LUT: 1 256 65536F\n" + ramp(256);
    // Only the last digits, and the line feed, may be missing.
    const std::size_t shortest = good.size() - 3;
    for (std::size_t size = 0; size <= good.size(); ++size) {
        Halvorn1DReader reader;
        const Failure failure = failureOf([&] { Halvorn::read(reader, good.substr(0, size), "test.lut"); });
        EXPECT_EQ(failure == kNoFailure, size >= shortest) << size;
        EXPECT_EQ(reader.getTransform() != nullptr, size >= shortest) << size;
    }
}

TEST(Halvorn1DReader, anyByteMayBeReplaced)
{
    const std::string good = "LUT: 3 256 4096\n" + ramp(768);
    for (std::size_t i = 0; i < 80; ++i) {
        for (const char c : {'\0', '\n', '#', ' ', '-', '9', '\x80', '\xff'}) {
            std::string text = good;
            text[i] = c;
            Halvorn1DReader reader;
            const Failure failure = failureOf([&] { Halvorn::read(reader, text, "test.lut"); });
            EXPECT_EQ(failure == kNoFailure, reader.getTransform() != nullptr);
        }
    }
}

TEST(Halvorn1DReader, claimsItsExtensionInAnyCase)
{
    const Halvorn1DReader reader;
    EXPECT_STREQ(reader.getName(), "Halvorn LUT Reader");
    EXPECT_TRUE(reader.isFileSupported("/no/such/a.lut"));
    EXPECT_TRUE(reader.isFileSupported("A.LUT"));
    for (const char* name : {"a.3dl", "a.lut1", "lut", ""})
        EXPECT_FALSE(reader.isFileSupported(name)) << name;
}
