#pragma once

#include "utils/exception.h"

namespace Morvane_2015_1_42::Impl {

/// Throws 0x6030001 with the parameter's name when a host passed null for it.
inline void requireParameter(const void* pointer, const char* name)
{
    if (!pointer) Color::raise(Color::LogCategory::MORVANE_COLOR, Color::ErrorIds::NULL_PARAMETER, name);
}

} // namespace Morvane_2015_1_42::Impl
