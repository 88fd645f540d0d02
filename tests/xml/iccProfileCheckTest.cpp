#include "xml/iccProfileCheck.h"

#include "tests/xml/icc.h"

#include <gtest/gtest.h>

using namespace Color;

namespace {

// The display profile of these tests has six tags, so its table ends at byte 204. At byte 132 there is the entry of the
// first tag, "rXYZ", whose data begins at byte 204 and has 20 bytes.
constexpr std::size_t kSizeAt = 0;
constexpr std::size_t kTagCountAt = 128;
constexpr std::size_t kFirstOffsetAt = 136;
constexpr std::size_t kFirstSizeAt = 140;

const std::string kGood = Icc::display({0x0233}).bytes();

void expectCheck(const std::string& bytes, ICCProfileStatus status, const std::string& report)
{
    const ICCProfileCheck check = checkICCProfile(bytes);
    EXPECT_EQ(check.status, status) << check.report;
    EXPECT_EQ(check.report, report);
}

void expectWarning(const std::string& bytes, const std::string& text)
{
    expectCheck(bytes, ICCProfileStatus::Warning, "warning: " + text);
}

void expectNonCompliant(const std::string& bytes, const std::string& text)
{
    expectCheck(bytes, ICCProfileStatus::NonCompliant, "non-compliant: " + text);
}

void expectCritical(const std::string& bytes, const std::string& text)
{
    expectCheck(bytes, ICCProfileStatus::CriticalError, "critical: " + text);
}

} // namespace

TEST(ICCProfileCheck, statusesAreNumbered)
{
    EXPECT_EQ(static_cast<int>(ICCProfileStatus::Compliant), 0);
    EXPECT_EQ(static_cast<int>(ICCProfileStatus::Warning), 1);
    EXPECT_EQ(static_cast<int>(ICCProfileStatus::NonCompliant), 2);
    EXPECT_EQ(static_cast<int>(ICCProfileStatus::CriticalError), 3);
}

TEST(ICCProfileCheck, soundProfilesAreCompliant)
{
    ASSERT_EQ(kGood.size(), 312u);
    expectCheck(kGood, ICCProfileStatus::Compliant, "");
    Icc::Profile profile = Icc::display({});
    for (const char* profileClass : {"scnr", "mntr", "prtr", "link", "spac", "abst", "nmcl"}) {
        profile.profileClass = profileClass;
        expectCheck(profile.bytes(), ICCProfileStatus::Compliant, "");
    }
    for (const uint32_t version : {0x02000000U, 0x02400000U, 0x04000000U, 0x04400000U}) {
        profile.version = Icc::u32(version);
        expectCheck(profile.bytes(), ICCProfileStatus::Compliant, "");
    }
}

TEST(ICCProfileCheck, tagsMayShareTheirBytes)
{
    // The third entry, of "bXYZ", says what the first says.
    std::string bytes = kGood;
    bytes.replace(160, 8, bytes.substr(kFirstOffsetAt, 8));
    expectCheck(bytes, ICCProfileStatus::Compliant, "");
}

TEST(ICCProfileCheck, anotherSignatureIsCritical)
{
    expectCritical(Icc::withU32(kGood, 36, 0x58435350), "the signature at byte 36 is 'XCSP' and not 'acsp'");
    expectCritical(std::string(200, '\0'), "the signature at byte 36 is '0x00000000' and not 'acsp'");
}

TEST(ICCProfileCheck, profileThatEndsInItsHeaderIsCritical)
{
    expectCritical("", "the profile ends after 0 bytes, within its header");
    expectCritical(kGood.substr(0, 131), "the profile ends after 131 bytes, within its header");
}

TEST(ICCProfileCheck, profileShorterThanItsHeaderTellsIsCritical)
{
    expectCritical(Icc::withU32(kGood, kSizeAt, 313),
                   "the profile ends after 312 of the 313 bytes that its header tells");
    expectCritical(Icc::withU32(kGood, kSizeAt, 0xffffffff),
                   "the profile ends after 312 of the 4294967295 bytes that its header tells");
    // The last two bytes only pad.
    expectCritical(kGood.substr(0, 310), "the profile ends after 310 of the 312 bytes that its header tells");
    expectCritical(kGood.substr(0, 309), "the profile ends after 309 of the 312 bytes that its header tells; "
                                         "tag 'bTRC' of 14 bytes at byte 296 ends behind the 309 bytes of the profile");
}

TEST(ICCProfileCheck, bytesBehindTheProfileAreWorthAWarning)
{
    expectWarning(kGood + "x", "the file goes on behind the 312 bytes of the profile");
}

TEST(ICCProfileCheck, profilesThatAreTooLargeAreCritical)
{
    std::string bytes = kGood;
    bytes.resize(16777216);
    expectWarning(bytes, "the file goes on behind the 312 bytes of the profile");
    bytes += '\0';
    expectCritical(bytes, "the profile has more than 16777216 bytes");
}

TEST(ICCProfileCheck, versionsAreTwoAndFour)
{
    const auto withVersion = [](char version) {
        std::string bytes = kGood;
        bytes[8] = version;
        return bytes;
    };
    expectNonCompliant(withVersion(0), "there is no version 0");
    expectNonCompliant(withVersion(1), "there is no version 1");
    expectNonCompliant(withVersion(3), "there is no version 3");
    expectCritical(withVersion(5), "version 5 is newer than 4");
    expectCritical(withVersion('\xff'), "version 255 is newer than 4");
}

TEST(ICCProfileCheck, unknownClassesAreCritical)
{
    expectCritical(Icc::withU32(kGood, 12, 0x4d4e5452), "there is no profile class 'MNTR'");
    expectCritical(Icc::withU32(kGood, 12, 7), "there is no profile class '0x00000007'");
    expectNonCompliant(Icc::withU32(kGood, 12, 0), "the profile tells no class");
}

TEST(ICCProfileCheck, profileWithoutTagsIsNotCompliant)
{
    expectNonCompliant(Icc::withU32(kGood, kTagCountAt, 0), "the profile has no tags");
}

TEST(ICCProfileCheck, tagTableMustFit)
{
    // 15 entries end at byte 312.
    const ICCProfileCheck filled = checkICCProfile(Icc::withU32(kGood, kTagCountAt, 15));
    EXPECT_EQ(filled.report.find("too few for a table"), std::string::npos) << filled.report;
    expectCritical(Icc::withU32(kGood, kTagCountAt, 16), "the profile has 312 bytes, too few for a table of 16 tags");
    expectCritical(Icc::withU32(kGood, kTagCountAt, 0xffffffff),
                   "the profile has 312 bytes, too few for a table of 4294967295 tags");
    expectCheck(Icc::withU32(kGood, kSizeAt, 203), ICCProfileStatus::CriticalError,
                "critical: the profile has 203 bytes, too few for a table of 6 tags; "
                "warning: the file goes on behind the 203 bytes of the profile");
    expectCheck(Icc::withU32(kGood, kSizeAt, 0), ICCProfileStatus::CriticalError,
                "critical: the profile has 0 bytes, too few for a table of 6 tags; "
                "warning: the file goes on behind the 0 bytes of the profile");
}

TEST(ICCProfileCheck, tagsLieBehindTheTable)
{
    expectCritical(Icc::withU32(kGood, kFirstOffsetAt, 0),
                   "tag 'rXYZ' of 20 bytes at byte 0 begins within the header or the tag table");
    expectCritical(Icc::withU32(kGood, kFirstOffsetAt, 200),
                   "tag 'rXYZ' of 20 bytes at byte 200 begins within the header or the tag table");
}

TEST(ICCProfileCheck, tagsLieInsideTheProfile)
{
    expectCheck(Icc::withU32(kGood, kFirstOffsetAt, 292), ICCProfileStatus::Compliant, "");
    expectCritical(Icc::withU32(kGood, kFirstOffsetAt, 296),
                   "tag 'rXYZ' of 20 bytes at byte 296 ends behind the 312 bytes of the profile");
    expectCheck(Icc::withU32(kGood, kFirstSizeAt, 108), ICCProfileStatus::Compliant, "");
    expectCritical(Icc::withU32(kGood, kFirstSizeAt, 109),
                   "tag 'rXYZ' of 109 bytes at byte 204 ends behind the 312 bytes of the profile");
    expectCritical(Icc::withU32(kGood, kFirstSizeAt, 0xffffffff),
                   "tag 'rXYZ' of 4294967295 bytes at byte 204 ends behind the 312 bytes of the profile");
    // The sum of the two is 4 in 32 bits.
    expectCritical(Icc::withU32(Icc::withU32(kGood, kFirstOffsetAt, 0xfffffff0), kFirstSizeAt, 20),
                   "tag 'rXYZ' of 20 bytes at byte 4294967280 ends behind the 312 bytes of the profile");
}

TEST(ICCProfileCheck, whatFollowsTheProfileIsNotPartOfIt)
{
    const std::string longer = kGood + std::string(100, '\0');
    expectCheck(Icc::withU32(longer, kFirstOffsetAt, 312), ICCProfileStatus::CriticalError,
                "critical: tag 'rXYZ' of 20 bytes at byte 312 ends behind the 312 bytes of the profile; "
                "warning: the file goes on behind the 312 bytes of the profile");
}

TEST(ICCProfileCheck, tagsHaveAType)
{
    expectCheck(Icc::withU32(kGood, kFirstSizeAt, 8), ICCProfileStatus::Compliant, "");
    expectCritical(Icc::withU32(kGood, kFirstSizeAt, 7), "tag 'rXYZ' of 7 bytes at byte 204 has no room for its type");
    expectCritical(Icc::withU32(kGood, kFirstSizeAt, 0), "tag 'rXYZ' of 0 bytes at byte 204 has no room for its type");
}

TEST(ICCProfileCheck, tagsStandOnce)
{
    std::string bytes = kGood;
    bytes.replace(144, 4, "rXYZ");
    expectCritical(bytes, "there are two tags 'rXYZ'");
}

TEST(ICCProfileCheck, tagsBeginAtMultiplesOfFour)
{
    expectWarning(Icc::withU32(kGood, kFirstOffsetAt, 206), "tag 'rXYZ' begins at byte 206, no multiple of 4");
}

TEST(ICCProfileCheck, theWorstComesFirst)
{
    const std::string bytes = Icc::withU32(kGood + "x", kFirstSizeAt, 0);
    expectCheck(Icc::withU32(bytes, 12, 0), ICCProfileStatus::CriticalError,
                "critical: tag 'rXYZ' of 0 bytes at byte 204 has no room for its type; "
                "non-compliant: the profile tells no class; "
                "warning: the file goes on behind the 312 bytes of the profile");
}

TEST(ICCProfileCheck, reportsAreShort)
{
    // 200,000 empty tags of one name, at byte 0 each.
    const std::size_t count = 200000;
    std::string bytes = kGood.substr(0, 128) + Icc::u32(static_cast<uint32_t>(count));
    bytes.resize(bytes.size() + 12 * count);
    expectCheck(Icc::withU32(bytes, kSizeAt, static_cast<uint32_t>(bytes.size())), ICCProfileStatus::CriticalError,
                "critical: tag '0x00000000' of 0 bytes at byte 0 has no room for its type; "
                "tag '0x00000000' of 0 bytes at byte 0 begins within the header or the tag table; "
                "there are two tags '0x00000000'; "
                "tag '0x00000000' of 0 bytes at byte 0 has no room for its type; and 599995 more");
}
