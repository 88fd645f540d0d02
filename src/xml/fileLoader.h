#pragma once

#include "xml/ioReader.h"

#include <memory>
#include <string>
#include <vector>

namespace Color {

/// In the order of trial.
using Readers = std::vector<std::unique_ptr<IOReader>>;

/// A fresh set of all readers.
Readers makeReaders();

/// Reads a file with the first of the readers that claim it and can read it. Throws 0x3060001 when none claims it; when
/// one alone does, its own failure; when several do and all fail, 0x3060005 with the failures of all.
ColorTransformPtr loadWith(const Readers& readers, const std::string& path);

} // namespace Color
