#pragma once

#include "utils/preferences.h"

#include <istream>
#include <memory>
#include <string>

namespace Color {

/// Reads config files: XML with the root MorvaneConfig. A reader can be used again; each read starts clean.
class XMLPreferencesReader
{
public:
    /// The version is the one that the preferences get.
    explicit XMLPreferencesReader(const std::string& version);
    XMLPreferencesReader(const XMLPreferencesReader&) = delete;
    XMLPreferencesReader& operator=(const XMLPreferencesReader&) = delete;
    ~XMLPreferencesReader();

    /// Throws 0x3020018 when the file cannot be opened.
    void readFile(const std::string& fileName);
    /// Reads, as a file, a text that is already open; the name is for messages.
    void readStream(std::istream& stream, const std::string& fileName);

    /// What the last read made; null after a failure.
    PreferencesPtr getPreferences() const;

private:
    class Impl;
    /// Runs a read and what is checked after it.
    template <class Body>
    void read(Body&& body);

    std::unique_ptr<Impl> m_impl;
};

} // namespace Color
