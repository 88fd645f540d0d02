#pragma once

#include "morvane/transformImpl.h"
#include "morvane/transformStore.h"
#include "transform/matrixOp.h"

#include <memory>
#include <string>
#include <vector>

/// A transform that multiplies red, green and blue by a factor.
inline Morvane_2015_1_42::TransformPtr makeTransform(const std::string& id, float factor = 2.f)
{
    using namespace Morvane_2015_1_42;
    const Color::ColorTransformPtr model(new Color::Transform(id, "", {}, "", ""));
    auto matrix = std::make_unique<Color::MatrixOp>(BIT_DEPTH_32f, BIT_DEPTH_32f);
    for (const uint32_t diagonal : {0u, 5u, 10u})
        matrix->getArray().setValue(diagonal, factor);
    model->getOpList().append(matrix.release());
    return TransformPtr(new Impl::Transform(model));
}

/// The ids of all entries in order.
inline std::vector<std::string> idsOf(const Morvane_2015_1_42::Impl::TransformStore& store)
{
    std::vector<std::string> ids;
    for (const auto& item : store.getItems())
        ids.push_back(item.id);
    return ids;
}
