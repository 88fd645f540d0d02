#pragma once

#include "utils/exception.h"

namespace Color {

/// The status that exported functions make and return as a MorvaneStatus.
class StatusImpl : public MorvaneStatus
{
public:
    StatusImpl() = default;
    ~StatusImpl() override;
    StatusImpl& operator=(const Exception& exception);
};

/// Runs the body of an exported function. A Color::Exception becomes the status; any other exception passes through.
template <class Body>
MorvaneStatus statusOf(Body&& body)
{
    StatusImpl status;
    try {
        body();
    } catch (const Exception& exception) {
        status = exception;
    }
    return status;
}

} // namespace Color
