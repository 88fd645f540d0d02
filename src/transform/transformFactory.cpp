#include "transform/transformFactory.h"

#include "transform/matrixOp.h"
#include "utils/uuid.h"

#include <boost/make_shared.hpp>

namespace Color {

namespace {

/// No descriptors, no ops, and a fresh id.
ColorTransformPtr makeNamed(const std::string& name, const Descriptions& descriptions)
{
    return boost::make_shared<Transform>(makeUuid(), name, descriptions, std::string(), std::string());
}

} // namespace

ColorTransformPtr makeTransform() { return makeNamed("none", {}); }

ColorTransformPtr makeStockIdentity()
{
    ColorTransformPtr transform = makeNamed("Stock Identity Transform", {"Identity transform."});
    transform->getOpList().append(new MatrixOp(BIT_DEPTH_16f, BIT_DEPTH_16f, makeUuid(), "identity", Descriptions()));
    transform->validate();
    return transform;
}

} // namespace Color
