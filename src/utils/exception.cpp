#include "utils/exception.h"

#include "utils/logging.h"

namespace Color {

Exception::Exception() : m_error(ErrorMessage::none()) {}

Exception::Exception(const char* sourceFile, int line, const ErrorMessage& errorMessage) : m_error(errorMessage)
{
    m_error.logMessage = sourcePath(sourceFile) + "(" + std::to_string(line) + "): " + errorMessage.logMessage;
    log(LOG_LEVEL_DEBUG, "%s", m_error.logMessage);
}

Exception::Exception(const Exception& previous, const ErrorMessage& extra) : m_error(previous.m_error)
{
    m_error.message += ": " + extra.message;
    m_error.logMessage += ": " + extra.logMessage;
}

Exception::~Exception() = default;

void logFailure(const ErrorMessage& message) { log(LOG_LEVEL_DEBUG, "%s", message.logMessage); }

ErrorMessage makeErrorMessage(const char* category, const ErrorSite& site, FormatArguments arguments)
{
    const char* format = findErrorTextOrReport(site.id, site.file, site.line);
    return formatErrorMessage(category, site.id, format, arguments);
}

} // namespace Color
