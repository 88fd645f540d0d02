#include "xml/halvorn3DReader.h"

#include "tests/utils/commaLocale.h"
#include "tests/xml/halvorn.h"
#include "tests/xml/temporaryDirectory.h"
#include "transform/lut3DOp.h"

using namespace Color;
using Halvorn::kMesh;
using Halvorn::kRows;
using Halvorn::times;

namespace {

Lut3DOp read(const std::string& text)
{
    Halvorn3DReader reader;
    Halvorn::read(reader, text, "test.3dl");
    EXPECT_EQ(reader.getTransform()->getOpList().size(), 1u);
    EXPECT_FALSE(reader.getTransform()->getId().empty());
    return dynamic_cast<const Lut3DOp&>(*reader.getTransform()->getOpList().get(0));
}

void expectFails(const std::string& text, ErrorId id, const std::string& message)
{
    Halvorn::expectReadFails<Halvorn3DReader>(text, id, message, "COLOR:XML:HALVORN_3D_READER", "test.3dl");
}

void expectSyntaxError(const std::string& text)
{
    expectFails(text, 0x30a0002, "Error reading file: File: test.3dl not valid. Syntax error. in test.3dl");
}

void expectUnexpectedEnd(const std::string& text)
{
    expectFails(text, 0x30a0002, "Error reading file: File: test.3dl not valid. Unexpected end of file. in test.3dl");
}

void expectWrongRowCount(const std::string& text)
{
    expectFails(text, 0x30a0004, "3d-LUT must have 17x17x17 rows of values: test.3dl");
}

/// Rows 0 1 2, 3 4 5 and so on, going round before 1000.
std::string countingRows()
{
    std::string text;
    for (int i = 0; i < kRows; ++i) {
        for (int channel = 0; channel < 3; ++channel)
            text += std::to_string((i * 3 + channel) % 1000) + (channel < 2 ? " " : "\n");
    }
    return text;
}

} // namespace

TEST(Halvorn3DReader, readsRowsInTheOrderOfTheFile)
{
    const Lut3DOp op = read(countingRows());
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(op.getId(), "");
    EXPECT_EQ(op.getName(), "");
    EXPECT_EQ(op.getDescriptions(), Descriptions{});
    EXPECT_EQ(op.getInterpolation(), Lut3DOp::INTERPOLATION_DEFAULT);
    EXPECT_EQ(op.getArray().getLength(), 17u);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
    const auto& values = op.getArray().getValues();
    ASSERT_EQ(values.size(), 14739u);
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(values[i], static_cast<float>(i % 1000)) << i;
}

TEST(Halvorn3DReader, meshIsCheckedAndDropped)
{
    EXPECT_TRUE(read(kMesh + countingRows()).isEqual(read(countingRows())));
    EXPECT_TRUE(read("# comment\n\n\t" + std::string(kMesh) + countingRows()).isEqual(read(countingRows())));
}

TEST(Halvorn3DReader, otherMeshesFail)
{
    const std::string mesh = kMesh;
    const auto replaced = [&](const std::string& number, const std::string& by) {
        std::string text = mesh;
        return text.replace(text.find(number), number.size(), by);
    };
    for (const std::string& line : {replaced("0 ", "1 "), replaced("64", "63"), replaced("960", "961"),
                                    replaced("1023", "1024"), replaced("1023", ""), replaced("1023", "1023 1023")}) {
        expectSyntaxError(line + countingRows());
    }
    std::string meshOf33;
    for (int i = 0; i < 33; ++i)
        meshOf33 += std::to_string(i == 32 ? 1023 : i * 32) + " ";
    expectSyntaxError(meshOf33 + "\n" + countingRows());
}

TEST(Halvorn3DReader, largestValueTellsTheDepth)
{
    const auto expectDepth = [](const std::string& largest, BitDepth depth) {
        const Lut3DOp op = read(times(kRows - 1, "0 1 2\n") + "0 " + largest + " 1\n");
        EXPECT_EQ(op.getInBitDepth(), depth) << largest;
        EXPECT_EQ(op.getOutBitDepth(), depth) << largest;
    };
    expectDepth("2", BIT_DEPTH_10i);
    expectDepth("1023", BIT_DEPTH_10i);
    expectDepth("1024", BIT_DEPTH_12i);
    expectDepth("4095", BIT_DEPTH_12i);
}

TEST(Halvorn3DReader, largerValuesFail)
{
    const std::string rows = times(kRows - 1, "0 1 2\n");
    expectFails(rows + "4096 0 0\n", 0x30a0003, "Invalid bit depth range: Max value is 4096 in test.3dl");
    expectFails(rows + "0 0 99999999999\n", 0x30a0003, "Invalid bit depth range: Max value is 2147483647 in test.3dl");
}

TEST(Halvorn3DReader, rowsHoldThreeNumbers)
{
    expectSyntaxError("1 2\n" + times(kRows, "1 2 3\n"));
    expectSyntaxError("1 2 3 4\n" + times(kRows, "1 2 3\n"));
    expectSyntaxError("1 2 3\n1 2\n" + times(kRows, "1 2 3\n"));
    // Behind the first row of a file nobody looks for more.
    EXPECT_EQ(read("1 2 3\n" + times(kRows - 1, "4 5 6 7\n")).getArray().getValues()[5], 6.0F);
}

TEST(Halvorn3DReader, linesHoldDigitsAlone)
{
    for (const char* row : {"1 2 x", "1 -2 3", "+1 2 3", "1.0 2 3", "1,2,3", "1 2 3 # comment",
                            "\xef\xbb\xbf"
                            "1 2 3",
                            "1 2 3;"}) {
        expectSyntaxError(row + ("\n" + times(kRows - 1, "1 2 3\n")));
        expectSyntaxError(times(kRows - 1, "1 2 3\n") + row);
    }
    expectSyntaxError(std::string("1 2 3\0\n", 7) + times(kRows - 1, "1 2 3\n"));
}

TEST(Halvorn3DReader, blanksTabsAndCommentsAreFree)
{
    const std::string text = "#\n\n \t1\t2   3 \n" + times(kRows - 2, "4 5 6\n\n") + " # comment\n7 8 9";
    const Lut3DOp op = read(text);
    const auto& values = op.getArray().getValues();
    EXPECT_EQ(values[2], 3.0F);
    EXPECT_EQ(values.back(), 9.0F);
}

TEST(Halvorn3DReader, linesOfOtherSystemsAreGood)
{
    std::string text;
    for (const char c : kMesh + countingRows() + "\n\n")
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_TRUE(read(text).isEqual(read(countingRows())));
}

TEST(Halvorn3DReader, fileWithoutARowEndsTooEarly)
{
    expectUnexpectedEnd("");
    expectUnexpectedEnd("# comment\n\n");
    expectUnexpectedEnd(kMesh);
}

TEST(Halvorn3DReader, otherNumbersOfRowsFail)
{
    expectWrongRowCount("1 2 3\n");
    expectWrongRowCount(times(kRows - 1, "1 2 3\n"));
    expectWrongRowCount(times(kRows + 1, "1 2 3\n"));
    expectWrongRowCount(times(100000, "9999 2 3\n"));
    // The first row too many ends the read.
    expectWrongRowCount(times(kRows + 1, "1 2 3\n") + "x\n");
}

TEST(Halvorn3DReader, fileThatCannotBeOpenedFails)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("missing.3dl");
    Halvorn3DReader reader;
    EXPECT_EQ(failureOf([&] { reader.readFile(path); }),
              (Failure{0x30a0002, "COLOR:XML:HALVORN_3D_READER",
                       "Error reading file: File: " + path + " not found. in " + path}));
}

TEST(Halvorn3DReader, fileThatCannotBeReadFails)
{
    // A directory opens like a file.
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("");
    Halvorn3DReader reader;
    EXPECT_EQ(failureOf([&] { reader.readFile(path); }),
              (Failure{0x30a0002, "COLOR:XML:HALVORN_3D_READER",
                       "Error reading file: File: " + path + " not valid. Unknown error. in " + path}));
}

TEST(Halvorn3DReader, readsNoTextInMemory)
{
    Halvorn3DReader reader;
    EXPECT_EQ(failureOf([&] { reader.readBuffer(countingRows().c_str()); }),
              (Failure{0x30a0001, "COLOR:XML:HALVORN_3D_READER",
                       "Internal - Unsupported buffer parsing by Halvorn 3d-LUT reader"}));
}

TEST(Halvorn3DReader, failureLeavesNothingOfAFormerRead)
{
    Halvorn3DReader reader;
    for (const bool isFile : {true, false}) {
        Halvorn::read(reader, countingRows(), "test.3dl");
        EXPECT_NE(reader.getTransform(), nullptr);
        EXPECT_FALSE(failureOf([&] { isFile ? reader.readFile("/no/such.3dl") : reader.readBuffer(""); }) ==
                     kNoFailure);
        EXPECT_EQ(reader.getTransform(), nullptr);
    }
}

TEST(Halvorn3DReader, doesNotDependOnTheLocale)
{
    const CommaLocale locale;
    EXPECT_EQ(read(times(kRows, "1 1234 3\n")).getArray().getValues()[1], 1234.0F);
}

TEST(Halvorn3DReader, fileCutAtAnyByteOfItsEndsFailsOrReads)
{
    const std::string good = kMesh + times(kRows, "12 34 567\n");
    // Only the last digits, and the line feed, may be missing.
    const std::size_t shortest = good.size() - 3;
    for (std::size_t size = 0; size <= good.size(); ++size) {
        if (size == 200) size = good.size() - 200;
        Halvorn3DReader reader;
        const Failure failure = failureOf([&] { Halvorn::read(reader, good.substr(0, size), "test.3dl"); });
        EXPECT_EQ(failure == kNoFailure, size >= shortest) << size;
        EXPECT_EQ(reader.getTransform() != nullptr, size >= shortest) << size;
    }
}

TEST(Halvorn3DReader, anyByteMayBeReplaced)
{
    const std::string good = kMesh + times(kRows, "1 2 3\n");
    for (std::size_t i = 0; i < 90; ++i) {
        for (const char c : {'\0', '\n', '#', ' ', '-', '9', '\x80', '\xff'}) {
            std::string text = good;
            text[i] = c;
            Halvorn3DReader reader;
            const Failure failure = failureOf([&] { Halvorn::read(reader, text, "test.3dl"); });
            EXPECT_EQ(failure == kNoFailure, reader.getTransform() != nullptr);
        }
    }
}

TEST(Halvorn3DReader, claimsItsExtensionInAnyCase)
{
    const Halvorn3DReader reader;
    EXPECT_STREQ(reader.getName(), "Halvorn 3DL Reader");
    EXPECT_TRUE(reader.isFileSupported("/no/such/a.3dl"));
    EXPECT_TRUE(reader.isFileSupported("A.3Dl"));
    for (const char* name : {"a.lut", "a.3d", "3dl", ""})
        EXPECT_FALSE(reader.isFileSupported(name)) << name;
}
