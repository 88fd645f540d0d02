#pragma once

#include "utils/exception.h"

#include <gtest/gtest.h>

/// The failure that a call raises. The test fails when there is none.
template <class Call>
Color::Exception failureOf(Call&& call)
{
    try {
        call();
    } catch (const Color::Exception& exception) {
        return exception;
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}
