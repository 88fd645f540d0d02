#include "transformChain.h"

#include "failure.h"

#include <cstdio>

namespace Command {

namespace {

using Morvane::TransformPtr;

/// The type names of a transform's ops, as their sections inside the one of the transform tell them.
class OpNames : public Morvane::Transform::ContentCallbacks
{
public:
    void beginSection(const char* title) override
    {
        if (m_depth++ == 1) names.emplace_back(title);
    }
    void endSection() override { --m_depth; }
    void addField(const char*, const char*) override {}

    std::vector<std::string> names;

private:
    int m_depth = 0;
};

TransformPtr join(const TransformPtr& first, const TransformPtr& second)
{
    TransformPtr joined;
    const Morvane::MorvaneStatus status = Morvane::concatenateTransforms(first, second, joined);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot join the transforms: " + messageOf(status));
    return joined;
}

/// The change between two depths and nothing else.
TransformPtr makeScale(Morvane::BitDepth in, Morvane::BitDepth out)
{
    const float factor = Morvane::getBitDepthValueRange(out) / Morvane::getBitDepthValueRange(in);
    const float matrix[16] = {factor, 0, 0, 0, 0, factor, 0, 0, 0, 0, factor, 0, 0, 0, 0, factor};
    const float offsets[4] = {0, 0, 0, 0};
    TransformPtr scale;
    const Morvane::MorvaneStatus made = Morvane::CreateMatrixTransform(in, out, matrix, offsets, true, scale);
    if (!made) throw Failure(ExitCode::TRANSFORM, "cannot make a scale: " + messageOf(made));
    return scale;
}

/// A scale between two equal depths would do nothing, and be removed as such.
Morvane::BitDepth anotherThan(Morvane::BitDepth depth)
{
    return depth == Morvane::BIT_DEPTH_8i ? Morvane::BIT_DEPTH_16i : Morvane::BIT_DEPTH_8i;
}

/// A dither changes no scale, whatever its depths: at an end of the chain it would hand the image values of the other
/// side. An op that does nothing but scale goes between them.
TransformPtr withScaleAroundDither(const TransformPtr& chain)
{
    OpNames ops;
    const Morvane::MorvaneStatus described = chain->describe(ops);
    if (!described || ops.names.empty()) return chain;
    TransformPtr scaled = chain;
    if (ops.names.front() == "Dither") {
        const Morvane::BitDepth in = chain->getInputBitDepth();
        scaled = join(makeScale(anotherThan(in), in), scaled);
    }
    if (ops.names.back() == "Dither") {
        const Morvane::BitDepth out = chain->getOutputBitDepth();
        scaled = join(scaled, makeScale(out, anotherThan(out)));
    }
    return scaled;
}

} // namespace

std::string messageOf(Morvane::MorvaneStatus status)
{
    if (status.getErrorMessage()) return status.getErrorMessage();
    char number[32];
    std::snprintf(number, sizeof number, "error 0x%x", static_cast<unsigned>(status.getErrorCode()));
    return number;
}

Morvane::TransformPtr loadTransform(const std::string& path)
{
    Morvane::TransformPtr transform;
    const Morvane::MorvaneStatus status = Morvane::loadColorTransform(path.c_str(), transform);
    if (!status) {
        throw Failure(ExitCode::TRANSFORM, "cannot read transform '" + path + "': " + messageOf(status));
    }
    return transform;
}

Morvane::TransformPtr loadTransformChain(const std::vector<std::string>& paths, bool inverse)
{
    Morvane::TransformPtr chain;
    for (const std::string& path : paths) {
        const Morvane::TransformPtr next = loadTransform(path);
        if (!chain) {
            chain = next;
            continue;
        }
        Morvane::TransformPtr joined;
        const Morvane::MorvaneStatus status = Morvane::concatenateTransforms(chain, next, joined);
        if (!status) throw Failure(ExitCode::TRANSFORM, "cannot use transform '" + path + "': " + messageOf(status));
        chain = joined;
    }
    if (!inverse) return withScaleAroundDither(chain);

    Morvane::TransformPtr inverted;
    const Morvane::MorvaneStatus status = chain->inverse(inverted);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot invert the transform: " + messageOf(status));
    return withScaleAroundDither(inverted);
}

} // namespace Command
