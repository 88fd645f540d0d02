#include "transform/transformFactory.h"

#include "transform/exposureContrastOp.h"
#include "transform/matrixOp.h"
#include "utils/uuid.h"

#include <boost/make_shared.hpp>
#include <memory>

namespace Color {

namespace {

/// No descriptors, no ops, and a fresh id.
ColorTransformPtr makeNamed(const std::string& name, const Descriptions& descriptions)
{
    return boost::make_shared<Transform>(makeUuid(), name, descriptions, std::string(), std::string());
}

Op* makeStockMatrix() { return new MatrixOp(BIT_DEPTH_16f, BIT_DEPTH_16f, makeUuid(), "identity", Descriptions()); }

} // namespace

ColorTransformPtr makeTransform() { return makeNamed("none", {}); }

ColorTransformPtr makeStockRaw()
{
    ColorTransformPtr transform =
        makeNamed("Stock Raw Transform", {"Identity transform with linear dynamic exposure contrast controls."});
    auto exposureContrast = std::make_unique<ExposureContrastOp>(BIT_DEPTH_16f, BIT_DEPTH_16f);
    exposureContrast->setStyle(ExposureContrastOp::STYLE_LINEAR);
    exposureContrast->getExposure()->makeDynamic();
    exposureContrast->getContrast()->makeDynamic();
    exposureContrast->setPivot(1.0);
    transform->getOpList().append(exposureContrast.release());
    transform->getOpList().append(makeStockMatrix());
    transform->validate();
    return transform;
}

ColorTransformPtr makeStockIdentity()
{
    ColorTransformPtr transform = makeNamed("Stock Identity Transform", {"Identity transform."});
    transform->getOpList().append(makeStockMatrix());
    transform->validate();
    return transform;
}

} // namespace Color
