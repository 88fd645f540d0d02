#pragma once

#include "utils/logging.h"

#include <string>
#include <utility>
#include <vector>

/// Keeps the lines that are logged while it exists.
class LogRecorder
{
public:
    using Lines = std::vector<std::pair<Color::LogLevel, std::string>>;

    LogRecorder() : m_former(Color::exchangeLogger(record)) { s_lines.clear(); }
    ~LogRecorder() { Color::exchangeLogger(m_former); }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    const Lines& lines() const { return s_lines; }

private:
    static void record(Color::LogLevel level, const char* text) { s_lines.emplace_back(level, text); }

    static inline Lines s_lines;
    Color::LoggerFunction m_former;
};
