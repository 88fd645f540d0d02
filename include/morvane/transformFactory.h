#pragma once

#include "morvane/basePath.h"
#include "morvane/bitDepth.h"
#include "morvane/export.h"
#include "morvane/halfFlags.h"
#include "morvane/status.h"
#include "morvane/transform.h"

namespace Morvane_2015_1_42 {

/// Transforms that are available without a file.
enum StockTransform : uint32_t
{
    /// Linear exposure and contrast, both dynamic and without effect until a host sets them.
    STOCK_TRANSFORM_RAW = 0,
    STOCK_TRANSFORM_IDENTITY = 1, ///< leaves every pixel as it is
};

/// \name Factories
///
/// Each makes a transform of one operator, with a fresh UUID as its id, the name "none" and no descriptions. All fail
/// with 0x2010001 on a depth that is none. Arrays are copied during the call; one that must not be null and is fails
/// with 0x6030001 where nothing else is said.
/// @{

/// Makes a transform of one matrix: out = matrix * in + offsets.
///
/// \param matrix  row by row; 16 values when is4x4, which then include alpha, else 9
/// \param offsets added after the product, in the scale of the output depth; 4 values when is4x4, else 3
///
/// The values include the ratio of the depths: an identity from 8i to 32f has the diagonal 1/255. With 3 by 3 values
/// alpha is scaled by that ratio. Fails with 0x203000e when offsets is null.
MORVANE_API MorvaneStatus CreateMatrixTransform(BitDepth in, BitDepth out, const float* matrix, const float* offsets,
                                                bool is4x4, TransformPtr& result);

/// Makes a transform of one curve per colour channel; alpha is scaled by the ratio of the depths.
///
/// \param length             entries of each of the three tables, 1 to 16777216; 65536 with a half domain
/// \param red,green,blue     the outputs, in the scale of the output depth, whatever the type of the values. Entry i is
///                           the output at i * getBitDepthValueRange(in) / (length - 1), in between is interpolated;
///                           with a half domain it is the output at the half float of the bit pattern i
/// \param flags              bits that are no flag are ignored; raw halfs concern files alone, the values are plain
///                           numbers in any case
///
/// An entry that is NaN renders as 0, an infinite one as the largest number. Fails, before any value is read, with
/// 0x2010004 on length 0, 0x2010005 on one above the bound, and with a half domain 0x204000e on any other but 65536.
MORVANE_API MorvaneStatus Create1DLutTransformFromFloat(BitDepth in, BitDepth out, unsigned length, const float* red,
                                                        const float* green, const float* blue, HalfFlags flags,
                                                        TransformPtr& result);
MORVANE_API MorvaneStatus Create1DLutTransformFromInt(BitDepth in, BitDepth out, unsigned length, const unsigned* red,
                                                      const unsigned* green, const unsigned* blue, HalfFlags flags,
                                                      TransformPtr& result);
MORVANE_API MorvaneStatus Create1DLutTransformFromShort(BitDepth in, BitDepth out, unsigned length,
                                                        const unsigned short* red, const unsigned short* green,
                                                        const unsigned short* blue, HalfFlags flags,
                                                        TransformPtr& result);

/// Makes a transform of one colour cube; alpha is scaled by the ratio of the depths. It has no inverse.
///
/// \param dimension grid points per axis, 1 to 129
/// \param values    dimension * dimension * dimension colours of three values each, red, green, blue, in the scale of
///                  the output depth, whatever the type of the values; the blue coordinate varies fastest, the red one
///                  slowest
///
/// Fails, before any value is read, with 0x2010004 on dimension 0, with 0x205000d on one above 129.
MORVANE_API MorvaneStatus Create3DLutTransformFromFloat(BitDepth in, BitDepth out, unsigned dimension,
                                                        const float* values, TransformPtr& result);
MORVANE_API MorvaneStatus Create3DLutTransformFromInt(BitDepth in, BitDepth out, unsigned dimension,
                                                      const unsigned* values, TransformPtr& result);
MORVANE_API MorvaneStatus Create3DLutTransformFromShort(BitDepth in, BitDepth out, unsigned dimension,
                                                        const unsigned short* values, TransformPtr& result);

/// Makes a transform that spreads, by a fixed pattern, the error that rounding to the dither depth will make. Values
/// stay in the scale of the input depth, so a transform of this alone is for equal depths; another operator changes
/// them. It does nothing when the input is no finer than the dither depth or that one is a float depth, and has no
/// inverse. Fails with 0x2010001 also when the dither depth is none.
MORVANE_API MorvaneStatus CreateDitherTransform(BitDepth in, BitDepth out, BitDepth dither, TransformPtr& result);

/// Makes a transform that stands for the one that an alias of the preferences names. The alias is looked up, and the
/// file read, by finalize(). When addAliasInPreferences() points the alias elsewhere, the transform is finalized anew
/// with the values that it has; should that fail, it is left without renderers. It has no inverse. Fails with 0x6030001
/// when alias is null, 0x2080001 when it is empty, and with what loading the preferences fails with.
MORVANE_API MorvaneStatus CreateReferenceTransformFromAlias(BitDepth in, BitDepth out, const char* alias,
                                                            TransformPtr& result);

/// Makes a transform that stands for the one in a file, which finalize() reads. It has no inverse.
///
/// \param basePath where a relative path starts from; it cannot be resolved without one. An absolute path needs none.
///
/// Fails with 0x6030001 when path is null, 0x2080001 when it is empty.
MORVANE_API MorvaneStatus CreateReferenceTransformFromPath(BitDepth in, BitDepth out, const char* path,
                                                           BasePath basePath, TransformPtr& result);

/// @}

/// Makes a stock transform: half floats in and out, with a fresh UUID as its id. A value that is none gives a transform
/// without operators.
MORVANE_API MorvaneStatus createStockTransform(StockTransform stock, TransformPtr& result);

/// Makes a transform that does the first and then the second; both stay as they are. The second's operators are fitted
/// to the depth in which the first ends. Descriptions are joined, the input descriptor is the first's and the output
/// descriptor the second's. Fails with 0x204000f on a null handle.
MORVANE_API MorvaneStatus concatenateTransforms(const TransformPtr& first, const TransformPtr& second,
                                                TransformPtr& result);

} // namespace Morvane_2015_1_42
