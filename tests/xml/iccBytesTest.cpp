#include "xml/iccBytes.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace Color;

TEST(ICCBytes, numbersAreBigEndian)
{
    const std::string bytes = "\x01\x82\xff\xfe\x05";
    EXPECT_EQ(bigEndian16(bytes, 0), 0x0182);
    EXPECT_EQ(bigEndian16(bytes, 2), 0xfffe);
    EXPECT_EQ(bigEndian32(bytes, 0), 0x0182fffeu);
    EXPECT_EQ(bigEndian32(bytes, 1), 0x82fffe05u);
}

TEST(ICCBytes, nothingIsReadBehindTheEnd)
{
    const std::string bytes = "\x01\x02\x03\x04";
    EXPECT_THROW(bigEndian32(bytes, 1), std::out_of_range);
    EXPECT_THROW(bigEndian16(bytes, 3), std::out_of_range);
    EXPECT_THROW(bigEndian16("", 0), std::out_of_range);
}

TEST(ICCBytes, signaturesAreFourCharacters)
{
    EXPECT_EQ(iccSignature("acsp"), 0x61637370u);
    EXPECT_EQ(iccSignature("XYZ "), 0x58595a20u);
    EXPECT_EQ(iccSignatureText(0x61637370), "acsp");
    EXPECT_EQ(iccSignatureText(0x58595a20), "XYZ ");
}

TEST(ICCBytes, signaturesThatCannotBePrintedAreNumbers)
{
    EXPECT_EQ(iccSignatureText(0), "0x00000000");
    EXPECT_EQ(iccSignatureText(0x6163730a), "0x6163730a");
    EXPECT_EQ(iccSignatureText(0xff7f2041), "0xff7f2041");
}
