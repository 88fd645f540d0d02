#pragma once

#include "failure.h"

#include "morvane/bitDepth.h"

#include <string>
#include <vector>

namespace Command {

/// What the command line says after "apply".
struct ApplyOptions
{
    std::vector<std::string> transforms;
    std::vector<std::string> files; ///< further transforms, then the inputs, then the output
    bool inverse = false;
    bool dryRun = false;
    Morvane_2015_1_42::BitDepth outputDepth = Morvane_2015_1_42::BIT_DEPTH_UNKNOWN; ///< unknown: as the input
    unsigned threads = 1;
};

/// Converts the images. An image that fails is reported and the next one goes on; the code of the first failure comes
/// back. Throws Failure for what concerns all images, before any work.
ExitCode runApply(const ApplyOptions& options);

} // namespace Command
