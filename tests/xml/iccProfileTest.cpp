#include "xml/iccProfile.h"

#include "tests/xml/icc.h"
#include "xml/iccBytes.h"

#include <gtest/gtest.h>
#include <thread>
#include <type_traits>
#include <vector>

using namespace Color;

TEST(ICCProfile, tellsItsSpaces)
{
    Icc::Profile made = Icc::display({});
    made.deviceSpace = "CMYK";
    made.connectionSpace = "Lab ";
    const ICCProfile profile(made.bytes());
    ASSERT_TRUE(profile.isOpen());
    EXPECT_EQ(profile.getError(), "");
    EXPECT_EQ(iccSignatureText(profile.getDeviceSpace()), "CMYK");
    EXPECT_EQ(iccSignatureText(profile.getConnectionSpace()), "Lab ");
}

TEST(ICCProfile, readsTagsAsTheyAre)
{
    const ICCProfile profile(Icc::display({1, 2, 3}).bytes());
    ASSERT_TRUE(profile.isOpen());
    EXPECT_TRUE(profile.hasTag(iccSignature("gTRC")));
    EXPECT_EQ(profile.readTag(iccSignature("gTRC")), Icc::curve({1, 2, 3}));
    EXPECT_EQ(profile.readTag(iccSignature("bXYZ")), Icc::xyz(0x24a0, 0x0f84, 0xb6cf));
}

TEST(ICCProfile, tagsThatAreNotThereAreEmpty)
{
    const ICCProfile profile(Icc::display({}).bytes());
    EXPECT_FALSE(profile.hasTag(iccSignature("kTRC")));
    EXPECT_EQ(profile.readTag(iccSignature("kTRC")), "");
}

TEST(ICCProfile, staysWhereItsContextKnowsIt)
{
    EXPECT_FALSE(std::is_copy_constructible_v<ICCProfile> || std::is_move_constructible_v<ICCProfile>);
    EXPECT_FALSE(std::is_copy_assignable_v<ICCProfile> || std::is_move_assignable_v<ICCProfile>);
}

TEST(ICCProfile, refusalsHaveAReason)
{
    Icc::Profile made;
    for (int i = 0; i < 101; ++i)
        made["t" + std::to_string(100 + i)] = Icc::curve({});
    const ICCProfile profile(made.bytes());
    EXPECT_FALSE(profile.isOpen());
    EXPECT_EQ(profile.getError(), "Too many tags (101)");
    EXPECT_FALSE(ICCProfile("").isOpen());
}

TEST(ICCProfile, threadsDoNotSeeTheErrorsOfOthers)
{
    const std::string good = Icc::display({0x0233}).bytes();
    const std::string bad = Icc::withU32(good, 128, 101);
    std::vector<std::thread> threads;
    std::vector<int> right(4);
    for (std::size_t i = 0; i < right.size(); ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 200; ++round) {
                const bool isGood = i % 2 == 0;
                const ICCProfile profile(isGood ? good : bad);
                right[i] += profile.getError() == (isGood ? "" : "Too many tags (101)") ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, std::vector<int>(4, 200));
}
