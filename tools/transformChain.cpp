#include "transformChain.h"

#include "failure.h"

#include <cstdio>

namespace Command {

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
    if (!inverse) return chain;

    Morvane::TransformPtr inverted;
    const Morvane::MorvaneStatus status = chain->inverse(inverted);
    if (!status) throw Failure(ExitCode::TRANSFORM, "cannot invert the transform: " + messageOf(status));
    return inverted;
}

} // namespace Command
