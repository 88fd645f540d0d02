#include "utils/errorId.h"
#include "utils/errorMessage.h"

#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

namespace {

using namespace Color;

struct Row
{
    ErrorId id;
    const char* name;
    const char* text;
};

constexpr Row ROWS[] = {
#define MORVANE_ERROR(id, name, text) {id, #name, text},
#include "utils/errorTable.inc"
#undef MORVANE_ERROR
};

/// 64-bit FNV-1a.
uint64_t digestOf(const std::string& text)
{
    uint64_t digest = 0xcbf29ce484222325;
    for (const char c : text)
        digest = (digest ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return digest;
}

TEST(ErrorTable, has240Rows) { EXPECT_EQ(std::size(ROWS), 240u); }

// The digest of the published table, taken from its text. A change here changes what hosts are told.
TEST(ErrorTable, idsTextsAndOrderAreThePublishedOnes)
{
    std::ostringstream all;
    for (const Row& row : ROWS)
        all << std::hex << row.id << ": " << row.text << '\n';
    EXPECT_EQ(digestOf(all.str()), 0xffec7d328e05c813u);
}

TEST(ErrorTable, firstRowOfARepeatedIdIsFound)
{
    EXPECT_STREQ(findErrorText(0x1010005), "Could not get lock on file %1$s: %2$s.");
    EXPECT_STREQ(findErrorText(0x4030001), "Failure on fragment shader program compilation: %1$s");
}

TEST(ErrorTable, everyIdFindsItsFirstText)
{
    std::map<ErrorId, std::string> first;
    for (const Row& row : ROWS)
        first.emplace(row.id, row.text);
    EXPECT_EQ(first.size(), 238u);
    for (const auto& [id, text] : first)
        EXPECT_EQ(findErrorText(id), text);
}

TEST(ErrorTable, namesAreTheIds)
{
    EXPECT_EQ(ErrorIds::ROI_MISMATCH, 0x1010001u);
    EXPECT_EQ(ErrorIds::LOCK_FAILED, 0x1010005u);
    EXPECT_EQ(ErrorIds::LOCK_RELEASE_FAILED, 0x1010005u);
    EXPECT_EQ(ErrorIds::FUNCTION_UNRECOGNIZED_STYLE, 0x2100001u);
    EXPECT_EQ(ErrorIds::GPU_SHADER_COMPILATION, 0x4030001u);
    EXPECT_EQ(ErrorIds::GPU_ADAPTOR, 0x4030001u);
    EXPECT_EQ(ErrorIds::NATIVE_CATALOG_CONNECTION_SPACE_REQUIRED, 0x6050009u);
}

TEST(ErrorTable, oddTextsStay)
{
    EXPECT_STREQ(findErrorText(0x203000e), "Invalid matrix offsets values ");
    EXPECT_STREQ(findErrorText(0x204000e), "%1$d entries found, %2$d req'd for halfDomain lut %3$s: %4$s ");
    EXPECT_STREQ(findErrorText(0x3060004), "Filesystem error for '%1$s': '%2$s");
    EXPECT_STREQ(findErrorText(0x3060005), "Unable to read file '%1$s'.\n\n%2$s");
    EXPECT_STREQ(findErrorText(0x3070005),
                 "Illegal Lut1D channel dimensions:                         red %2$d, green %3$d, blue %4$d");
    EXPECT_STREQ(findErrorText(0x3070007),
                 "Illegal Lut3D channel dimensions:                         red %2$d, green %3$d, blue %4$d");
    EXPECT_STREQ(findErrorText(0x3080002), "Unsupported ICC profile connection space %1$: %2$s");
    EXPECT_STREQ(findErrorText(0x30b000e), "Illegal id: \"%1$s\"");
    EXPECT_STREQ(findErrorText(0x6030001), "NULL parameter: %s");
}

TEST(ErrorTable, idsThatAreNotThereHaveNoText)
{
    for (const ErrorId id : {0u, 1u, 0x1010000u, 0x1010007u, 0xffffffffu})
        EXPECT_EQ(findErrorText(id), nullptr) << id;
}

} // namespace
