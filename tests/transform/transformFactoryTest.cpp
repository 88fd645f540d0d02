#include "transform/transformFactory.h"

#include "tests/utils/failure.h"
#include "transform/exposureContrastOp.h"
#include "transform/matrixOp.h"

#include <gtest/gtest.h>

using namespace Color;

namespace {

/// 8-4-4-4-12 hexadecimal digits.
bool isUuid(const std::string& text)
{
    if (text.size() != 36) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool wantsDash = i == 8 || i == 13 || i == 18 || i == 23;
        const bool isHex = (text[i] >= '0' && text[i] <= '9') || (text[i] >= 'a' && text[i] <= 'f');
        if (wantsDash ? text[i] != '-' : !isHex) return false;
    }
    return true;
}

/// The identity that both stock transforms end with.
void expectStockMatrix(const Op& op)
{
    const auto& matrix = dynamic_cast<const MatrixOp&>(op);
    EXPECT_EQ(matrix.getName(), "identity");
    EXPECT_TRUE(isUuid(matrix.getId())) << matrix.getId();
    EXPECT_EQ(matrix.getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(matrix.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_TRUE(matrix.isUnityDiagonal());
    EXPECT_FALSE(matrix.hasOffsets());
    EXPECT_TRUE(matrix.isIdentity());
}

} // namespace

TEST(TransformFactory, makesATransformWithoutOps)
{
    const ColorTransformPtr transform = makeTransform();
    EXPECT_TRUE(isUuid(transform->getId())) << transform->getId();
    EXPECT_EQ(transform->getUniqueId().size(), 32U);
    EXPECT_EQ(transform->getName(), "none");
    EXPECT_TRUE(transform->getDescriptions().empty());
    EXPECT_EQ(transform->getInputDescriptor(), "");
    EXPECT_EQ(transform->getOutputDescriptor(), "");
    EXPECT_EQ(transform->getInverseOf(), "");
    EXPECT_TRUE(transform->getOpList().empty());
}

TEST(TransformFactory, everyTransformHasAnIdOfItsOwn) { EXPECT_NE(makeTransform()->getId(), makeTransform()->getId()); }

TEST(TransformFactory, makesTheStockIdentity)
{
    const ColorTransformPtr transform = makeStockIdentity();
    EXPECT_TRUE(isUuid(transform->getId())) << transform->getId();
    EXPECT_EQ(transform->getName(), "Stock Identity Transform");
    EXPECT_EQ(transform->getDescriptions(), Descriptions{"Identity transform."});
    EXPECT_EQ(transform->getInputDescriptor(), "");
    EXPECT_EQ(transform->getOutputDescriptor(), "");

    ASSERT_EQ(transform->getOpList().size(), 1U);
    expectStockMatrix(*transform->getOpList().get(0));
    EXPECT_NE(transform->getOpList().get(0)->getId(), transform->getId());
}

TEST(TransformFactory, makesTheStockRawTransform)
{
    const ColorTransformPtr transform = makeStockRaw();
    EXPECT_TRUE(isUuid(transform->getId())) << transform->getId();
    EXPECT_EQ(transform->getName(), "Stock Raw Transform");
    EXPECT_EQ(transform->getDescriptions(),
              Descriptions{"Identity transform with linear dynamic exposure contrast controls."});
    EXPECT_EQ(transform->getInputDescriptor(), "");
    EXPECT_EQ(transform->getOutputDescriptor(), "");

    ASSERT_EQ(transform->getOpList().size(), 2U);
    const auto& op = dynamic_cast<const ExposureContrastOp&>(*transform->getOpList().get(0));
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_16f);
    EXPECT_EQ(op.getStyle(), ExposureContrastOp::STYLE_LINEAR);
    EXPECT_EQ(op.getExposure()->get(), 0.0);
    EXPECT_TRUE(op.getExposure()->isDynamic());
    EXPECT_EQ(op.getContrast()->get(), 1.0);
    EXPECT_TRUE(op.getContrast()->isDynamic());
    EXPECT_EQ(op.getPivot(), 1.0);
    EXPECT_FALSE(op.getBypass()->isDynamic());
    expectStockMatrix(*transform->getOpList().get(1));
}

TEST(TransformFactory, stockRawTransformsAreIndependent)
{
    const ColorTransformPtr first = makeStockRaw();
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    exposure.setValue(3.0);
    first->setDynamicProperty(exposure);
    makeStockRaw()->getDynamicProperty(exposure);
    EXPECT_EQ(exposure.getValue(), 0.0);
}

TEST(TransformFactory, stockIdentityClonesInvertsAndConcatenates)
{
    const ColorTransformPtr transform = makeStockIdentity();
    EXPECT_TRUE(transform->clone(CloneMode::Copy)->isEqual(*transform));

    Transform inverse;
    transform->inverse(inverse);
    EXPECT_EQ(inverse.getName(), "Inverse of: [Stock Identity Transform]");
    EXPECT_TRUE(inverse.getOpList().get(0)->isIdentity());

    const ColorTransformPtr both = concatenateTransforms(transform, makeStockIdentity());
    EXPECT_EQ(both->getOpList().size(), 2U);
}
