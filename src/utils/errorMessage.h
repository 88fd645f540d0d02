#pragma once

#include "utils/errorId.h"
#include "utils/logCategory.h"
#include "utils/positionalFormat.h"

#include <string>

namespace Color {

/// The text of an error id, or null. The first row of the table with that id counts.
const char* findErrorText(ErrorId id);

/// The same for throw sites: an id without a text is also reported on the standard error stream.
const char* findErrorTextOrReport(ErrorId id, const char* sourceFile, int line);

/// How messages name a source file: "transform\matrixOp" for "transform/matrixOp.cpp".
std::string sourcePath(const char* sourceFile);

/// What is known of a failure.
class ErrorMessage
{
public:
    /// "No Error".
    ErrorMessage();
    ErrorMessage(const char* category, ErrorId id, const std::string& text);
    ErrorMessage(const ErrorMessage&) = default;
    ErrorMessage& operator=(const ErrorMessage&) = default;
    virtual ~ErrorMessage();

    /// The shared read-only "No Error".
    static const ErrorMessage& none();

    void setLogMessage(const char* category, const std::string& text);

    ErrorId id = 0;
    std::string message;    ///< what the host sees
    std::string logMessage; ///< category, ": ", message; in a thrown exception with the source place in front
};

/// Formats into at most 1023 characters.
ErrorMessage formatErrorMessage(const char* category, ErrorId id, const char* format, FormatArguments arguments);

} // namespace Color
