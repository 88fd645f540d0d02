#pragma once

#include "utils/preferences.h"

#include <ostream>
#include <string>

namespace Color {

/// Writes config files. What was written is read again as it was.
///
/// Aliases and paths that could not be read again, since they hold control characters, line breaks or what is no UTF-8,
/// are refused with 0x1010006, before anything is written: a config file serves all hosts of a machine.
class XMLPreferencesWriter
{
public:
    /// Throws 0x1010006 for what would be refused.
    void check(const Preferences& preferences) const;

    void write(const Preferences& preferences, std::ostream& stream) const;
    /// Fails as writeOutputFile() does, too.
    void write(const Preferences& preferences, const std::string& fileName) const;
};

} // namespace Color
