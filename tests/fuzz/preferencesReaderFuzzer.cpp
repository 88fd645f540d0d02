#include "utils/exception.h"
#include "xml/xmlPreferencesReader.h"
#include "xml/xmlPreferencesWriter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

/// A read either gives preferences or raises a Color::Exception and leaves nothing behind.
Color::PreferencesPtr read(const std::string& text)
{
    Color::XMLPreferencesReader reader("1");
    bool failed = false;
    try {
        std::istringstream stream(text);
        reader.readStream(stream, "fuzz.xml");
    } catch (const Color::Exception&) {
        failed = true;
    }
    const Color::PreferencesPtr preferences = reader.getPreferences();
    if (failed == (preferences != nullptr)) std::abort();
    return preferences;
}

/// Preferences are either refused or read again as they were written.
void checkWrite(const Color::Preferences& preferences)
{
    std::ostringstream stream;
    try {
        Color::XMLPreferencesWriter().write(preferences, stream);
    } catch (const Color::Exception&) {
        return;
    }
    const Color::PreferencesPtr again = read(stream.str());
    if (!again || again->getAliases() != preferences.getAliases()) std::abort();
    if (again->getSharedHome() != preferences.getSharedHome()) std::abort();
    if (again->getAutoConfigureMonitorProfile() != preferences.getAutoConfigureMonitorProfile()) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (const Color::PreferencesPtr preferences = read(text)) checkWrite(*preferences);
    return 0;
}
