#pragma once

#include "tests/utils/failure.h"
#include "xml/xmlPreferencesReader.h"
#include "xml/xmlPreferencesWriter.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

/// Small config files and what comes of reading them.
namespace Prefs {

constexpr const char* kVersion = "2015.1.42";

/// A config file whose content starts on line 2.
inline std::string document(const std::string& content)
{
    return "<MorvaneConfig version=\"1.0\">\n" + content + "</MorvaneConfig>\n";
}

inline std::string table(const std::string& content)
{
    return document("<ReferenceTable>\n" + content + "</ReferenceTable>\n");
}

inline void read(Color::XMLPreferencesReader& reader, const std::string& text)
{
    std::istringstream stream(text);
    reader.readStream(stream, "test.xml");
}

/// Reads a text as a file called "test.xml".
inline Color::Preferences read(const std::string& text)
{
    Color::XMLPreferencesReader reader(kVersion);
    read(reader, text);
    return *reader.getPreferences();
}

inline std::string write(const Color::Preferences& preferences)
{
    std::ostringstream stream;
    Color::XMLPreferencesWriter().write(preferences, stream);
    return stream.str();
}

/// Expects that reading a text fails with exactly this message, and leaves no preferences.
inline void expectReadFails(const std::string& text, Color::ErrorId id, const std::string& message,
                            const std::string& category = "COLOR:XML:PREFS_READER")
{
    Color::XMLPreferencesReader reader(kVersion);
    EXPECT_EQ(failureOf([&] { read(reader, text); }), (Failure{id, category, message})) << text;
    EXPECT_EQ(reader.getPreferences(), nullptr);
}

inline void expectEqual(const Color::Preferences& a, const Color::Preferences& b)
{
    EXPECT_EQ(a.getVersion(), b.getVersion());
    EXPECT_EQ(a.getAliases(), b.getAliases());
    EXPECT_EQ(a.getSharedHome(), b.getSharedHome());
    EXPECT_EQ(a.getAutoConfigureMonitorProfile(), b.getAutoConfigureMonitorProfile());
}

/// Texts that would mean something else in XML if nothing were done about it.
const char* const kAwkwardTexts[] = {
    "\"",
    "'",
    "<",
    ">",
    "&",
    "&amp;",
    "&#10;",
    "a b",
    " a ",
    "  ",
    "]]>",
    "<!--",
    "C:\\a",
    "a/b.ctf",
    "%1$s",
    "%s%n",
    "\x7f",
    "\xc3\xbc",
    "\xe6\xbc\xa2\xe5\xad\x97",
    "<Ref alias=\"x\" path='y'/>",
    "\xf0\x9f\x8e\xa8",
    "\xef\xbb\xbf",
    "\xc2\x85",
    "\xe2\x80\xa8",
};

} // namespace Prefs
