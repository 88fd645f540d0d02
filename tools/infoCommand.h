#pragma once

#include "failure.h"

#include <string>
#include <vector>

namespace Command {

/// Prints what each transform file holds, as indented text or as a JSON array with one object per file. A file that
/// cannot be read is reported and left out, and ExitCode::TRANSFORM comes back.
ExitCode runInfo(const std::vector<std::string>& files, bool json);

} // namespace Command
