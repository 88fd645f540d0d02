#pragma once

#include <cstddef>
#include <cstring>

namespace Color {

/// Compares as stored: a NaN equals itself, and -0 does not equal 0.
template <class T>
bool haveSameBits(const T* a, const T* b, std::size_t count)
{
    return std::memcmp(static_cast<const void*>(a), static_cast<const void*>(b), count * sizeof(T)) == 0;
}

} // namespace Color
