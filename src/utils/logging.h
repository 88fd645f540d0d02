#pragma once

#include "utils/positionalFormat.h"
#include "utils/publicTypes.h"

namespace Color {

/// Formats a line into at most 4095 characters and hands it to the logger. A null or empty format does nothing.
void logText(LogLevel level, const char* format, FormatArguments arguments);

template <class... Args>
void log(LogLevel level, const char* format, const Args&... args)
{
    logText(level, format, {FormatArgument(args)...});
}

/// Stores the logger, the default one for null, and returns the former. The default logger prints to the standard
/// output the lines whose level is not above the verbosity.
LoggerFunction exchangeLogger(LoggerFunction logger);

/// The highest level that the default logger prints, 0 at load. The setter returns the old value.
int getVerbosity();
int setVerbosity(int verbosity);

/// "USER", "DEBUG", or null for any other level.
const char* getLogLevelName(int level);

} // namespace Color
