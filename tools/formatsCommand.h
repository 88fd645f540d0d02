#pragma once

#include "failure.h"

namespace Command {

/// Prints the extensions of transforms that can be read, the pixel formats and the image formats, as text or as JSON.
ExitCode runFormats(bool json);

} // namespace Command
