#pragma once

#include "failure.h"

#include <string>
#include <vector>

namespace Command {

struct InfoOptions
{
    bool json = false;
    bool picture = false; ///< draw pictures also when the standard output is no terminal
};

/// Prints what each transform file holds, as indented text or as a JSON array with one object per file. On a terminal
/// the text has pictures of curves and cubes. A file that cannot be read is reported and left out, and
/// ExitCode::TRANSFORM comes back.
ExitCode runInfo(const std::vector<std::string>& files, const InfoOptions& options);

} // namespace Command
