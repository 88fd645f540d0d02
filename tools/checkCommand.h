#pragma once

#include "failure.h"

#include "morvane/status.h"

#include <string>
#include <vector>

namespace Command {

/// Reads each transform file, prepares it for rendering, and prints every warning and the error with their lines, as
/// text or as a JSON array with one object per file. Log lines are passed on to the logger. The code is that of the
/// worst file: ExitCode::TRANSFORM, then ExitCode::WARNINGS, then ExitCode::OK.
ExitCode runCheck(const std::vector<std::string>& files, bool json, Morvane_2015_1_42::LoggerFunction logger);

/// The line of a file that a message of the library about it tells, 0 when it tells none.
unsigned lineToldBy(const std::string& message, const std::string& file);

} // namespace Command
