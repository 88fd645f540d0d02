#include "utils/logging.h"

#include <array>
#include <atomic>
#include <cstdio>

namespace Color {

namespace {

constexpr std::size_t LOG_CAPACITY = 4096;

std::atomic<int> s_verbosity{0};

void printToStandardOutput(LogLevel level, const char* text)
{
    if (level <= getVerbosity() && text && *text) std::puts(text);
}

std::atomic<LoggerFunction> s_logger{printToStandardOutput};

} // namespace

void logText(LogLevel level, const char* format, FormatArguments arguments)
{
    if (!format || !*format) return;
    std::array<char, LOG_CAPACITY> text;
    formatText(text.data(), text.size(), format, arguments);
    s_logger.load(std::memory_order_acquire)(level, text.data());
}

LoggerFunction exchangeLogger(LoggerFunction logger)
{
    return s_logger.exchange(logger ? logger : printToStandardOutput, std::memory_order_acq_rel);
}

int getVerbosity() { return s_verbosity.load(std::memory_order_relaxed); }

int setVerbosity(int verbosity) { return s_verbosity.exchange(verbosity, std::memory_order_relaxed); }

const char* getLogLevelName(int level)
{
    switch (level) {
    case LOG_LEVEL_USER:
        return "USER";
    case LOG_LEVEL_DEBUG:
        return "DEBUG";
    default:
        return nullptr;
    }
}

} // namespace Color
