#include "transform/exposureContrastOp.h"

#include "testOp.h"
#include "tests/utils/failure.h"
#include "transform/gammaOp.h"
#include "transform/opList.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Color;

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

const DynamicProperty::Ids kIds[] = {DynamicProperty::EXPOSURE, DynamicProperty::CONTRAST, DynamicProperty::BYPASS};
const DynamicProperty::Ids kUnknownId = static_cast<DynamicProperty::Ids>(3);

void makeDynamic(ExposureContrastOp& op, DynamicProperty::Ids id)
{
    if (id == DynamicProperty::EXPOSURE) op.getExposure()->makeDynamic();
    if (id == DynamicProperty::CONTRAST) op.getContrast()->makeDynamic();
    if (id == DynamicProperty::BYPASS) op.getBypass()->makeDynamic();
}

DynamicProperty carrierOf(DynamicProperty::Ids id, double value)
{
    DynamicProperty carrier(id);
    carrier.setValue(value);
    return carrier;
}

/// The value of the property, dynamic or not.
double valueOf(const ExposureContrastOp& op, DynamicProperty::Ids id)
{
    if (id == DynamicProperty::EXPOSURE) return op.getExposure()->get();
    if (id == DynamicProperty::CONTRAST) return op.getContrast()->get();
    return op.getBypass()->get() ? 1.0 : 0.0;
}

std::unique_ptr<ExposureContrastOp> cloneOf(const ExposureContrastOp& op)
{
    return std::unique_ptr<ExposureContrastOp>(dynamic_cast<ExposureContrastOp*>(op.clone()));
}

Failure notAvailable(const std::string& name, const std::string& where)
{
    return {0x2010013, "COLOR:TRANSFORM:ALL", "Dynamic property " + name + " not available in " + where};
}

} // namespace

TEST(ExposureContrastOp, defaultHasNoEffect)
{
    ExposureContrastOp op;
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(op.getStyle(), ExposureContrastOp::STYLE_LINEAR);
    EXPECT_EQ(op.getExposure()->get(), 0.0);
    EXPECT_FALSE(op.getExposure()->isDynamic());
    EXPECT_EQ(op.getContrast()->get(), 1.0);
    EXPECT_FALSE(op.getContrast()->isDynamic());
    EXPECT_EQ(op.getPivot(), 1.0);
    EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure);
}

TEST(ExposureContrastOp, constructorsStoreTheirArguments)
{
    const ExposureContrastOp depths(BIT_DEPTH_8i, BIT_DEPTH_10i);
    EXPECT_EQ(depths.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(depths.getOutBitDepth(), BIT_DEPTH_10i);

    const ExposureContrastOp named(BIT_DEPTH_8i, BIT_DEPTH_10i, "id", "name", {"d"});
    EXPECT_EQ(named.getId(), "id");
    EXPECT_EQ(named.getName(), "name");
    EXPECT_EQ(named.getDescriptions(), Descriptions{"d"});
    EXPECT_EQ(named.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(named.getOutBitDepth(), BIT_DEPTH_10i);
}

TEST(ExposureContrastOp, saysWhatItIs)
{
    const ExposureContrastOp op;
    EXPECT_EQ(op.getOpType(), OP_EXPOSURE_CONTRAST);
    EXPECT_EQ(op.getOpTypeName(), "Exposure/Contrast");
    EXPECT_EQ(op.getMinimumVersion(), 1.3F);
}

TEST(ExposureContrastOp, stylesHaveTheirNumbersAndNames)
{
    const char* const names[] = {"video", "log", "linear"};
    for (uint32_t i = 0; i < 3; ++i) {
        EXPECT_STREQ(ExposureContrastOp::getStyleName(static_cast<ExposureContrastOp::Style>(i)), names[i]);
        EXPECT_EQ(ExposureContrastOp::styleNamed(names[i]), i);
    }
    EXPECT_STREQ(ExposureContrastOp::getStyleName(static_cast<ExposureContrastOp::Style>(3)), "");
    EXPECT_EQ(ExposureContrastOp::styleNamed("VIDEO"), ExposureContrastOp::STYLE_VIDEO);
    EXPECT_EQ(ExposureContrastOp::styleNamed("Linear"), ExposureContrastOp::STYLE_LINEAR);
}

TEST(ExposureContrastOp, unknownStyleNameFails)
{
    const char* const category = "COLOR:TRANSFORM:EXPOSURE_CONTRAST";
    EXPECT_EQ(failureOf([] { ExposureContrastOp::styleNamed("film"); }),
              (Failure{0x20a0001, category, "Unrecognized E/C style: film"}));
    EXPECT_EQ(failureOf([] { ExposureContrastOp::styleNamed(""); }),
              (Failure{0x20a0001, category, "Unrecognized E/C style: "}));
}

TEST(ExposureContrastOp, validateChecksDepths)
{
    ExposureContrastOp op(BIT_DEPTH_32f, BIT_DEPTH_UNKNOWN);
    EXPECT_EQ(failureOf([&] { op.validate(); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'OutBitDepth' attribute missing in Exposure/Contrast"}));
}

TEST(ExposureContrastOp, parametersHaveNoBounds)
{
    for (const double value : {-1000.0, 0.0, 1000.0, kInfinity, -kInfinity, kNan}) {
        ExposureContrastOp op;
        op.getExposure()->set(value);
        op.getContrast()->set(value);
        op.setPivot(value);
        EXPECT_EQ(failureOf([&] { op.validate(); }), kNoFailure) << value;
        EXPECT_FALSE(op.isNoOp()) << value;
    }
}

TEST(ExposureContrastOp, noOpAtExposureZeroAndContrastOne)
{
    ExposureContrastOp op(BIT_DEPTH_8i, BIT_DEPTH_32f);
    EXPECT_TRUE(op.isNoOp());
    op.setPivot(0.18);
    EXPECT_TRUE(op.isNoOp()) << "the pivot has no say";
    op.getExposure()->set(std::nextafter(0.0, 1.0));
    EXPECT_FALSE(op.isNoOp());
    op.getExposure()->set(-0.0);
    EXPECT_TRUE(op.isNoOp());
    op.getContrast()->set(std::nextafter(1.0, 2.0));
    EXPECT_FALSE(op.isNoOp());
}

TEST(ExposureContrastOp, dynamicButNeutralIsANoOp)
{
    ExposureContrastOp op;
    for (const DynamicProperty::Ids id : kIds)
        makeDynamic(op, id);
    EXPECT_TRUE(op.isNoOp());
    EXPECT_TRUE(op.isIdentity());
    op.setDynamicProperty(carrierOf(DynamicProperty::EXPOSURE, 0.5));
    EXPECT_FALSE(op.isNoOp());
    EXPECT_TRUE(op.hasDynamicProperties());
}

TEST(ExposureContrastOp, identityNeedsEqualDepths)
{
    EXPECT_TRUE(ExposureContrastOp(BIT_DEPTH_8i, BIT_DEPTH_8i).isIdentity());
    EXPECT_FALSE(ExposureContrastOp(BIT_DEPTH_8i, BIT_DEPTH_32f).isIdentity());
}

TEST(ExposureContrastOp, depthsLeaveTheParameters)
{
    ExposureContrastOp op;
    op.getExposure()->set(1.5);
    op.getContrast()->set(0.75);
    op.setPivot(0.18);
    op.setInBitDepth(BIT_DEPTH_8i);
    op.setOutBitDepth(BIT_DEPTH_16i);
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16i);
    EXPECT_EQ(op.getExposure()->get(), 1.5);
    EXPECT_EQ(op.getContrast()->get(), 0.75);
    EXPECT_EQ(op.getPivot(), 0.18);
}

TEST(ExposureContrastOp, nothingIsDynamicAtFirst)
{
    const ExposureContrastOp op;
    EXPECT_FALSE(op.hasDynamicProperties());
    for (const DynamicProperty::Ids id : kIds)
        EXPECT_FALSE(op.hasDynamicProperty(id)) << id;
}

TEST(ExposureContrastOp, anyDynamicPropertyCounts)
{
    for (const DynamicProperty::Ids dynamic : kIds) {
        ExposureContrastOp op;
        makeDynamic(op, dynamic);
        EXPECT_TRUE(op.hasDynamicProperties()) << dynamic;
        for (const DynamicProperty::Ids id : kIds)
            EXPECT_EQ(op.hasDynamicProperty(id), id == dynamic) << dynamic << " " << id;
        EXPECT_FALSE(op.hasDynamicProperty(kUnknownId));
    }
}

TEST(ExposureContrastOp, dynamicPropertyIsSetAndReadAlone)
{
    const double before[] = {0.0, 1.0, 0.0};
    for (const DynamicProperty::Ids dynamic : kIds) {
        ExposureContrastOp op;
        for (const DynamicProperty::Ids id : kIds)
            makeDynamic(op, id);
        // A bypass holds 0 or 1 only.
        const double value = dynamic == DynamicProperty::BYPASS ? 1.0 : 2.5;
        op.setDynamicProperty(carrierOf(dynamic, value));
        for (const DynamicProperty::Ids id : kIds) {
            const double expected = id == dynamic ? value : before[id];
            EXPECT_EQ(valueOf(op, id), expected) << dynamic << " " << id;
            DynamicProperty carrier = carrierOf(id, -1.0);
            op.getDynamicProperty(carrier);
            EXPECT_EQ(carrier.getId(), id);
            EXPECT_EQ(carrier.getValue(), expected) << dynamic << " " << id;
        }
    }
}

TEST(ExposureContrastOp, staticPropertyIsNotAvailable)
{
    const char* const names[] = {"Exposure", "Contrast", "Bypass"};
    for (const DynamicProperty::Ids wanted : kIds) {
        ExposureContrastOp op;
        for (const DynamicProperty::Ids id : kIds) {
            if (id != wanted) makeDynamic(op, id);
        }
        const double before = valueOf(op, wanted);
        DynamicProperty carrier = carrierOf(wanted, 7.0);
        const Failure failure = notAvailable(names[wanted], "Exposure/Contrast");
        EXPECT_EQ(failureOf([&] { op.getDynamicProperty(carrier); }), failure);
        EXPECT_EQ(failureOf([&] { op.setDynamicProperty(carrier); }), failure);
        EXPECT_EQ(carrier.getValue(), 7.0);
        EXPECT_EQ(valueOf(op, wanted), before);
    }
}

TEST(ExposureContrastOp, unknownPropertyIsNotAvailable)
{
    ExposureContrastOp op;
    op.setName("grade");
    for (const DynamicProperty::Ids id : kIds)
        makeDynamic(op, id);
    DynamicProperty carrier = carrierOf(kUnknownId, 7.0);
    EXPECT_EQ(failureOf([&] { op.getDynamicProperty(carrier); }), notAvailable("invalid property", "grade"));
    EXPECT_EQ(failureOf([&] { op.setDynamicProperty(carrier); }), notAvailable("invalid property", "grade"));
}

TEST(ExposureContrastOp, listWithStaticOpAloneHasNoProperty)
{
    OpList list;
    list.append(new ExposureContrastOp());
    DynamicProperty carrier(DynamicProperty::EXPOSURE);
    EXPECT_EQ(failureOf([&] { list.getDynamicProperty(carrier); }), notAvailable("Exposure", ""));
    EXPECT_EQ(failureOf([&] { list.setDynamicProperty(carrier); }), notAvailable("Exposure", ""));
}

TEST(ExposureContrastOp, listSetsEveryDynamicOpAndNoStaticOne)
{
    OpList list;
    for (int i = 0; i < 3; ++i) {
        auto op = std::make_unique<ExposureContrastOp>();
        if (i != 1) op->getContrast()->makeDynamic();
        list.append(op.release());
    }
    list.setDynamicProperty(carrierOf(DynamicProperty::CONTRAST, 1.5));
    const double expected[] = {1.5, 1.0, 1.5};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(dynamic_cast<const ExposureContrastOp&>(*list.get(i)).getContrast()->get(), expected[i]) << i;
    }
}

TEST(ExposureContrastOp, cloneIsEqual)
{
    ExposureContrastOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
    op.setStyle(ExposureContrastOp::STYLE_LOG);
    op.getExposure()->set(kNan);
    op.getContrast()->set(1.25);
    op.setPivot(kNan);
    const auto clone = cloneOf(op);
    EXPECT_TRUE(op.isEqual(*clone));
    EXPECT_EQ(clone->getOpType(), OP_EXPOSURE_CONTRAST);
    EXPECT_EQ(clone->getName(), "name");
    EXPECT_EQ(clone->getStyle(), ExposureContrastOp::STYLE_LOG);
    EXPECT_EQ(clone->getContrast()->get(), 1.25);
}

TEST(ExposureContrastOp, cloneHasItsOwnStaticProperties)
{
    ExposureContrastOp op;
    const auto clone = cloneOf(op);
    op.getExposure()->set(2.0);
    op.getContrast()->set(3.0);
    setBypass(op, true);
    EXPECT_EQ(clone->getExposure()->get(), 0.0);
    EXPECT_EQ(clone->getContrast()->get(), 1.0);
    EXPECT_FALSE(clone->getBypass()->get());
    for (const DynamicProperty::Ids id : kIds)
        makeDynamic(op, id);
    EXPECT_FALSE(clone->hasDynamicProperties());
}

TEST(ExposureContrastOp, cloneSharesDynamicPropertiesOneByOne)
{
    for (const DynamicProperty::Ids dynamic : kIds) {
        ExposureContrastOp op;
        makeDynamic(op, dynamic);
        const auto clone = cloneOf(op);
        EXPECT_EQ(op.getExposure() == clone->getExposure(), dynamic == DynamicProperty::EXPOSURE);
        EXPECT_EQ(op.getContrast() == clone->getContrast(), dynamic == DynamicProperty::CONTRAST);
        EXPECT_EQ(op.getBypass() == clone->getBypass(), dynamic == DynamicProperty::BYPASS);
        op.setDynamicProperty(carrierOf(dynamic, 1.0));
        EXPECT_EQ(valueOf(*clone, dynamic), 1.0);
        clone->setDynamicProperty(carrierOf(dynamic, 0.0));
        EXPECT_EQ(valueOf(op, dynamic), 0.0);
    }
}

TEST(ExposureContrastOp, inverseIsACopy)
{
    for (uint32_t style = 0; style < 3; ++style) {
        ExposureContrastOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "id", "name", {"d"});
        op.setStyle(static_cast<ExposureContrastOp::Style>(style));
        op.getExposure()->set(1.5);
        op.getContrast()->set(0.75);
        op.setPivot(0.18);
        OpList list;
        op.appendInverse(list);
        ASSERT_EQ(list.size(), 1U);
        const auto& inverse = dynamic_cast<const ExposureContrastOp&>(*list.get(0));
        EXPECT_EQ(inverse.getStyle(), style);
        EXPECT_EQ(inverse.getExposure()->get(), 1.5);
        EXPECT_EQ(inverse.getContrast()->get(), 0.75);
        EXPECT_EQ(inverse.getPivot(), 0.18);
        EXPECT_EQ(inverse.getInBitDepth(), BIT_DEPTH_8i);
        EXPECT_EQ(inverse.getOutBitDepth(), BIT_DEPTH_16f);
        EXPECT_TRUE(inverse.isEqual(op));
    }
}

TEST(ExposureContrastOp, inverseSharesDynamicProperties)
{
    ExposureContrastOp op;
    op.getExposure()->makeDynamic();
    OpList list;
    op.appendInverse(list);
    op.setDynamicProperty(carrierOf(DynamicProperty::EXPOSURE, 2.0));
    DynamicProperty carrier(DynamicProperty::EXPOSURE);
    list.getDynamicProperty(carrier);
    EXPECT_EQ(carrier.getValue(), 2.0);
}

TEST(ExposureContrastOp, inverseIsValidated)
{
    const ExposureContrastOp op(BIT_DEPTH_UNKNOWN, BIT_DEPTH_32f);
    OpList list;
    EXPECT_EQ(failureOf([&] { op.appendInverse(list); }),
              (Failure{0x2010001, "COLOR:TRANSFORM:ALL", "'InBitDepth' attribute missing in Exposure/Contrast"}));
    EXPECT_TRUE(list.empty());
}

TEST(ExposureContrastOp, isEqualComparesStyleAndParameters)
{
    const ExposureContrastOp op;
    EXPECT_TRUE(op.isEqual(ExposureContrastOp()));
    ExposureContrastOp style;
    style.setStyle(ExposureContrastOp::STYLE_VIDEO);
    EXPECT_FALSE(op.isEqual(style));
    ExposureContrastOp exposure;
    exposure.getExposure()->set(0.5);
    EXPECT_FALSE(op.isEqual(exposure));
    ExposureContrastOp contrast;
    contrast.getContrast()->set(0.5);
    EXPECT_FALSE(op.isEqual(contrast));
    ExposureContrastOp pivot;
    pivot.setPivot(0.5);
    EXPECT_FALSE(op.isEqual(pivot));
    for (const DynamicProperty::Ids id : kIds) {
        ExposureContrastOp dynamic;
        makeDynamic(dynamic, id);
        EXPECT_FALSE(op.isEqual(dynamic)) << id;
    }
    EXPECT_FALSE(op.isEqual(ExposureContrastOp(BIT_DEPTH_32f, BIT_DEPTH_8i)));
    EXPECT_FALSE(op.isEqual(GammaOp()));
}
