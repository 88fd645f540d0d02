#pragma once

#include "failure.h"

#include <string>

namespace Command {

/// Reads a transform of any format and writes it as a ctf file. The output takes its place when it is complete; until
/// then, and after any failure, what was there stays. Throws Failure.
ExitCode runConvert(const std::string& input, const std::string& output);

} // namespace Command
