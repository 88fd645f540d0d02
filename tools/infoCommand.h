#pragma once

#include "failure.h"

#include "morvane/finalize.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Command {

struct InfoOptions
{
    bool json = false;
    bool picture = false;   ///< draw pictures also when the standard output is no terminal
    bool optimized = false; ///< show what the optimizer makes of each transform, not what the file holds
    uint32_t threshold = Morvane_2015_1_42::OPTIMIZER_DEFAULT; ///< the lowest score that it acts on
    bool keepDynamic = false;                                  ///< it leaves operators with dynamic properties alone
};

/// Prints what each transform file holds, as indented text or as a JSON array with one object per file. On a terminal
/// the text has pictures of curves and cubes. A file that cannot be read or optimized is reported and left out, and
/// ExitCode::TRANSFORM comes back.
ExitCode runInfo(const std::vector<std::string>& files, const InfoOptions& options);

} // namespace Command
