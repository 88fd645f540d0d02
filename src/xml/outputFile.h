#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace Color {

/// Writes a file, whose former content is gone as soon as the file can be opened; a later failure leaves what was
/// written so far. Throws 0x3030003 when an existing file cannot be opened, 0x3030004 when there is no such directory,
/// 0x3030002 when the file cannot be made in it, and 0x3060004 with the system's reason when a write fails.
void writeOutputFile(const std::string& fileName, const std::function<void(std::ostream&)>& write);

} // namespace Color
