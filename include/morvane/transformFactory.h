#pragma once

#include "morvane/bitDepth.h"
#include "morvane/export.h"
#include "morvane/status.h"
#include "morvane/transform.h"

namespace Morvane_2015_1_42 {

/// Transforms that are available without a file.
enum StockTransform : uint32_t
{
    STOCK_TRANSFORM_IDENTITY = 1, ///< leaves every pixel as it is
};

/// Makes a transform of one matrix: out = matrix * in + offsets.
///
/// \param matrix  row by row; 16 values when is4x4, which then include alpha, else 9
/// \param offsets added after the product, in the scale of the output depth; 4 values when is4x4, else 3
///
/// The values include the ratio of the depths: an identity from 8i to 32f has the diagonal 1/255. With 3 by 3 values
/// alpha is scaled by that ratio. Fails with 0x6030001 when matrix is null, with 0x203000e when offsets is null, and
/// with 0x2010001 on a depth that is none. The transform has a fresh UUID as its id and the name "none".
MORVANE_API MorvaneStatus CreateMatrixTransform(BitDepth in, BitDepth out, const float* matrix, const float* offsets,
                                                bool is4x4, TransformPtr& result);

/// Makes a stock transform. A value that is none gives a transform without operators.
MORVANE_API MorvaneStatus createStockTransform(StockTransform stock, TransformPtr& result);

/// Makes a transform that does the first and then the second; both stay as they are. The second's operators are fitted
/// to the depth in which the first ends. Descriptions are joined, the input descriptor is the first's and the output
/// descriptor the second's. Fails with 0x204000f on a null handle.
MORVANE_API MorvaneStatus concatenateTransforms(const TransformPtr& first, const TransformPtr& second,
                                                TransformPtr& result);

} // namespace Morvane_2015_1_42
