#include "xml/xmlPreferencesWriter.h"

#include "utils/exception.h"
#include "xml/attributeText.h"
#include "xml/outputFile.h"
#include "xml/preferencesWriter.h"

#include <sstream>

namespace Color {

namespace {

void checkText(const std::string& text)
{
    if (!isAttributeText(text)) raise(LogCategory::XML_WRITER, ErrorIds::NAME_NOT_ALLOWED, text);
}

} // namespace

void XMLPreferencesWriter::check(const Preferences& preferences) const
{
    checkText(preferences.getSharedHome());
    for (const auto& [alias, entry] : preferences.getAliases()) {
        checkText(alias);
        checkText(entry.path);
    }
}

void XMLPreferencesWriter::write(const Preferences& preferences, std::ostream& stream) const
{
    check(preferences);
    stream << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    XmlFormatter formatter(stream);
    Xml::Writer::PreferencesWriter(formatter, preferences).write();
}

void XMLPreferencesWriter::write(const Preferences& preferences, const std::string& fileName) const
{
    // The file is opened when all there is to write is at hand, so that it is cut for as short a time as can be.
    std::ostringstream text;
    write(preferences, text);
    writeOutputFile(fileName, [&](std::ostream& stream) { stream << text.str(); });
}

} // namespace Color
