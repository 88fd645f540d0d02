#include "utils/dynamicPropertyImp.h"

#include "tests/utils/failure.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace Color;

DynamicProperty carrierOf(DynamicProperty::Ids id, double value)
{
    DynamicProperty carrier(id);
    carrier.setValue(value);
    return carrier;
}

const char* const kCategory = "COLOR:UTILS:DYNAMIC_PROP";

void expectRefusal(const Failure& failure, const std::string& name)
{
    EXPECT_EQ(failure, (Failure{0x1030002, kCategory, "Invalid property: " + name}));
}

TEST(DynamicPropertyImp, startsWithItsValueAndNotDynamic)
{
    const ExposureDynamicProperty exposure(1.5);
    EXPECT_EQ(exposure.getId(), DynamicProperty::EXPOSURE);
    EXPECT_STREQ(exposure.getName(), "Exposure");
    EXPECT_EQ(exposure.get(), 1.5);
    EXPECT_FALSE(exposure.isDynamic());

    const ContrastDynamicProperty contrast(0.75);
    EXPECT_EQ(contrast.getId(), DynamicProperty::CONTRAST);
    EXPECT_STREQ(contrast.getName(), "Contrast");
    EXPECT_EQ(contrast.get(), 0.75);
    EXPECT_FALSE(contrast.isDynamic());

    const BypassDynamicProperty bypass;
    EXPECT_EQ(bypass.getId(), DynamicProperty::BYPASS);
    EXPECT_STREQ(bypass.getName(), "Bypass");
    EXPECT_FALSE(bypass.get());
    EXPECT_FALSE(bypass.isDynamic());
}

TEST(DynamicPropertyImp, hasOnlyItsOwnId)
{
    const ContrastDynamicProperty contrast(1.0);
    EXPECT_FALSE(contrast.hasId(DynamicProperty::EXPOSURE));
    EXPECT_TRUE(contrast.hasId(DynamicProperty::CONTRAST));
    EXPECT_FALSE(contrast.hasId(DynamicProperty::BYPASS));
}

TEST(DynamicPropertyImp, getValueFillsACarrier)
{
    const DynamicProperty carrier = ContrastDynamicProperty(0.75).getValue();
    EXPECT_EQ(carrier.getId(), DynamicProperty::CONTRAST);
    EXPECT_EQ(carrier.getValue(), 0.75);
}

TEST(DynamicPropertyImp, dynamicValueIsReadAndWritten)
{
    ExposureDynamicProperty exposure(1.5);
    exposure.makeDynamic();
    EXPECT_TRUE(exposure.isDynamic());

    DynamicProperty carrier(DynamicProperty::EXPOSURE);
    exposure.read(carrier);
    EXPECT_EQ(carrier.getId(), DynamicProperty::EXPOSURE);
    EXPECT_EQ(carrier.getValue(), 1.5);

    exposure.write(carrierOf(DynamicProperty::EXPOSURE, -2.25));
    EXPECT_EQ(exposure.get(), -2.25);
}

TEST(DynamicPropertyImp, bypassTravelsAsZeroOrOne)
{
    BypassDynamicProperty bypass;
    bypass.makeDynamic();
    DynamicProperty carrier = carrierOf(DynamicProperty::BYPASS, 5.0);
    bypass.read(carrier);
    EXPECT_EQ(carrier.getValue(), 0.0);
    bypass.write(carrierOf(DynamicProperty::BYPASS, 1.0));
    EXPECT_TRUE(bypass.get());
    bypass.read(carrier);
    EXPECT_EQ(carrier.getValue(), 1.0);
    bypass.write(carrierOf(DynamicProperty::BYPASS, 0.0));
    EXPECT_FALSE(bypass.get());
}

TEST(DynamicPropertyImp, valueThatIsNotDynamicIsRefused)
{
    ExposureDynamicProperty exposure(1.5);
    DynamicProperty carrier = carrierOf(DynamicProperty::EXPOSURE, 9.0);
    expectRefusal(failureOf([&] { exposure.write(carrier); }), "Exposure");
    EXPECT_EQ(exposure.get(), 1.5);
    expectRefusal(failureOf([&] { exposure.read(carrier); }), "Exposure");
    EXPECT_EQ(carrier.getValue(), 9.0);
}

TEST(DynamicPropertyImp, carrierOfAnotherPropertyIsRefused)
{
    ContrastDynamicProperty contrast(0.75);
    contrast.makeDynamic();
    DynamicProperty carrier = carrierOf(DynamicProperty::EXPOSURE, 9.0);
    expectRefusal(failureOf([&] { contrast.write(carrier); }), "Contrast");
    EXPECT_EQ(contrast.get(), 0.75);
    expectRefusal(failureOf([&] { contrast.read(carrier); }), "Contrast");
    EXPECT_EQ(carrier.getId(), DynamicProperty::EXPOSURE);
    EXPECT_EQ(carrier.getValue(), 9.0);
}

TEST(DynamicPropertyImp, copyHasItsOwnValue)
{
    ExposureDynamicProperty original(1.5);
    original.makeDynamic();
    const ExposureDynamicProperty copy(original);
    original.set(3.0);
    EXPECT_EQ(copy.get(), 1.5);
    EXPECT_TRUE(copy.isDynamic());
    EXPECT_EQ(copy.getId(), DynamicProperty::EXPOSURE);
}

TEST(ValidateDynamicProperty, refusesIdsThatAreNoProperty)
{
    for (const uint32_t id : {0u, 1u, 2u})
        EXPECT_NO_THROW(validateDynamicProperty(DynamicProperty(static_cast<DynamicProperty::Ids>(id)))) << id;
    for (const uint32_t id : {3u, 0xffffffffu}) {
        const Failure failure =
            failureOf([id] { validateDynamicProperty(DynamicProperty(static_cast<DynamicProperty::Ids>(id))); });
        EXPECT_EQ(failure, (Failure{0x1030001, kCategory, "Invalid identifier"})) << id;
    }
}

} // namespace
