#pragma once

#include "morvane/export.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// Number of an error: 0xMMGGNNNN with module, group inside the module and running number. 0 is success.
using ErrorId = uint32_t;

/// Who a log line is meant for.
enum LogLevel : int
{
    LOG_LEVEL_USER = 0,  ///< for the person in front of the host
    LOG_LEVEL_DEBUG = 1, ///< for the engineer; every failure is logged at this level when it arises
};

/// Receives log lines. The text is valid during the call only. May be called from every thread that calls the library.
using LoggerFunction = void (*)(LogLevel, const char*);

/// Result of a call that can fail. Converts to true on success.
class MORVANE_API MorvaneStatus
{
public:
    /// Success: code 0, no message.
    MorvaneStatus();
    /// Copies the code and makes an own copy of the message.
    MorvaneStatus(const MorvaneStatus& other);
    MorvaneStatus& operator=(const MorvaneStatus& other);
    virtual ~MorvaneStatus();

    /// True exactly when the code is 0.
    operator bool() const;

    ErrorId getErrorCode();

    /// The text for a person, or null when there is none. Valid until this status is changed or destroyed.
    const char* getErrorMessage() const;

    /// Stores the code; the message stays.
    void setErrorCode(ErrorId code);

    /// Stores a copy of the text. Null and the empty text both leave the status without a message.
    void setErrorMessage(const char* message);

private:
    char* m_message;
    ErrorId m_code;
};

/// Installs the logger of this process and returns success. Null restores the default one, which prints lines of level
/// LOG_LEVEL_USER to the standard output. An installed function sees lines of every level.
MORVANE_API MorvaneStatus setLoggerFunction(LoggerFunction logger);

} // namespace Morvane_2015_1_42
