#pragma once

#include "utils/errorMessage.h"

namespace Color {

/// Every failure inside the library. Making one from a message logs it.
class Exception
{
public:
    /// "No Error".
    Exception();
    /// Puts the source place in front of the log message, "transform\matrixOp(702): ...", and logs it at level DEBUG.
    Exception(const char* sourceFile, int line, const ErrorMessage& errorMessage);
    /// A higher failure that wraps a lower one: the texts of previous, ": ", those of extra. Does not log.
    Exception(const Exception& previous, const ErrorMessage& extra);
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    virtual ~Exception();

    ErrorId getId() const { return m_error.id; }
    const std::string& getMessage() const { return m_error.message; }
    const std::string& getLogMessage() const { return m_error.logMessage; }

private:
    ErrorMessage m_error;
};

/// An error id together with the place that names it.
struct ErrorSite
{
    ErrorSite(ErrorId errorId, const char* sourceFile = __builtin_FILE(), int sourceLine = __builtin_LINE())
        : id(errorId), file(sourceFile), line(sourceLine)
    {}

    ErrorId id;
    const char* file;
    int line;
};

ErrorMessage makeErrorMessage(const char* category, const ErrorSite& site, FormatArguments arguments);

/// Throws (and thereby logs) the failure of this id: raise(LogCategory::XML_READER, ErrorIds::NAME, arguments...).
template <class... Args>
[[noreturn]] void raise(const char* category, ErrorSite site, const Args&... args)
{
    throw Exception(site.file, site.line, makeErrorMessage(category, site, {FormatArgument(args)...}));
}

/// Logs the message of this failure, with its category, at level DEBUG: for what a host is told but not refused.
void logFailure(const ErrorMessage& message);

template <class... Args>
void logFailure(const char* category, ErrorSite site, const Args&... args)
{
    logFailure(makeErrorMessage(category, site, {FormatArgument(args)...}));
}

/// Throws a failure that wraps a lower one.
template <class... Args>
[[noreturn]] void raiseAfter(const Exception& previous, const char* category, ErrorSite site, const Args&... args)
{
    throw Exception(previous, makeErrorMessage(category, site, {FormatArgument(args)...}));
}

} // namespace Color
