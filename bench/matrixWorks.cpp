#include "work.h"

namespace OCIO = OCIO_NAMESPACE;
namespace M = Morvane;

namespace {

M::TransformPtr makeMatrix(const std::vector<float>& matrix, const std::vector<float>& offsets)
{
    M::TransformPtr result;
    require(M::CreateMatrixTransform(M::BIT_DEPTH_32f, M::BIT_DEPTH_32f, matrix.data(), offsets.data(), true, result));
    return result;
}

Work workOf(const std::string& name, const std::vector<float>& matrix, const std::vector<float>& offsets)
{
    return {name, [=] { return makeMatrix(matrix, offsets); },
            [=]() -> OCIO::TransformRcPtr {
                const auto transform = OCIO::MatrixTransform::Create();
                std::vector<double> m(matrix.begin(), matrix.end());
                std::vector<double> o(offsets.begin(), offsets.end());
                transform->setMatrix(m.data());
                transform->setOffset(o.data());
                return transform;
            }};
}

const std::vector<float> kNoOffset = {0.f, 0.f, 0.f, 0.f};
const std::vector<float> kMix = {0.7f, 0.2f, 0.1f, 0, 0.1f, 0.8f, 0.1f, 0, 0.05f, 0.15f, 0.8f, 0, 0, 0, 0, 1.f};

} // namespace

Work scaleWork() { return workOf("scale", {1.1f, 0, 0, 0, 0, 0.9f, 0, 0, 0, 0, 1.2f, 0, 0, 0, 0, 1.f}, kNoOffset); }

Work matrixWork() { return workOf("matrix", kMix, kNoOffset); }

Work matrixWithOffsetWork() { return workOf("matrix with offset", kMix, {0.01f, 0.02f, 0.03f, 0.f}); }

Work rangeWork(const std::string& name, double minIn, double minOut, double maxIn, double maxOut)
{
    return {name,
            [=] {
                std::string text = "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">";
                const auto add = [&](const char* element, double value) {
                    if (value == value) {
                        text += std::string("<") + element + ">" + std::to_string(value) + "</" + element + ">";
                    }
                };
                add("minInValue", minIn);
                add("maxInValue", maxIn);
                add("minOutValue", minOut);
                add("maxOutValue", maxOut);
                return transformOf(text + "</Range>");
            },
            [=]() -> OCIO::TransformRcPtr {
                const auto range = OCIO::RangeTransform::Create();
                if (minIn == minIn && maxIn == maxIn) {
                    range->setMinInValue(minIn);
                    range->setMinOutValue(minOut);
                    range->setMaxInValue(maxIn);
                    range->setMaxOutValue(maxOut);
                    return range;
                }
                // The peer's one-sided range cannot shift: a matrix before it does that.
                double offset = 0;
                if (minIn == minIn) {
                    offset = minOut - minIn;
                    range->setMinInValue(minOut);
                    range->setMinOutValue(minOut);
                } else {
                    offset = maxOut - maxIn;
                    range->setMaxInValue(maxOut);
                    range->setMaxOutValue(maxOut);
                }
                if (offset == 0) return range;
                const auto matrix = OCIO::MatrixTransform::Create();
                const double offsets[4] = {offset, offset, offset, 0};
                matrix->setOffset(offsets);
                const auto group = OCIO::GroupTransform::Create();
                group->appendTransform(matrix);
                group->appendTransform(range);
                return group;
            }};
}
