#pragma once

#include "utils/exception.h"

#include <ostream>
#include <string>

/// What an action fails with, for comparison as a whole.
struct Failure
{
    Color::ErrorId id = 0;
    std::string category;
    std::string message;
};

inline bool operator==(const Failure& a, const Failure& b)
{
    return a.id == b.id && a.category == b.category && a.message == b.message;
}

inline std::ostream& operator<<(std::ostream& stream, const Failure& failure)
{
    return stream << "0x" << std::hex << failure.id << std::dec << " " << failure.category << ": " << failure.message;
}

const Failure kNoFailure;

/// Runs the action; kNoFailure when it does not fail. A log message reads "source(line): category: message".
template <class Action>
Failure failureOf(Action&& action)
{
    try {
        action();
    } catch (const Color::Exception& exception) {
        const std::string& log = exception.getLogMessage();
        const std::string placeEnd = "): ";
        const std::size_t begin = log.find(placeEnd) + placeEnd.size();
        return {exception.getId(), log.substr(begin, log.find(": ", begin) - begin), exception.getMessage()};
    }
    return kNoFailure;
}
