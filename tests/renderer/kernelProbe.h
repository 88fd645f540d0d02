#pragma once

#include "renderer/virtualRenderer.h"

#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

using Pixel = std::array<float, 4>;
using Pixels = std::vector<Pixel>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();

/// The same bits; any NaN is the same as any other.
inline bool isSame(float a, float b) { return std::isnan(a) ? std::isnan(b) : std::memcmp(&a, &b, sizeof a) == 0; }

inline bool isSame(const Pixel& a, const Pixel& b)
{
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!isSame(a[i], b[i])) return false;
    }
    return true;
}

inline std::string textOf(const Pixel& pixel)
{
    std::ostringstream text;
    text << std::setprecision(9);
    for (const float value : pixel) {
        text << value << " ";
    }
    return text.str();
}

/// Exact, save for a NaN, which is the same as any other.
inline ::testing::AssertionResult samePixel(const Pixel& actual, const Pixel& expected)
{
    if (isSame(actual, expected)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << textOf(actual) << "instead of " << textOf(expected);
}

inline Pixels render(const Rendering::VirtualRenderer& renderer, const Pixels& source)
{
    Pixels destination(source.size());
    renderer.render({source.data()->data(), destination.data()->data(), static_cast<uint32_t>(source.size()), 0, 0,
                     renderer.readDynamicValues()});
    return destination;
}

inline Pixel render(const Rendering::VirtualRenderer& renderer, const Pixel& source)
{
    return render(renderer, Pixels{source})[0];
}

/// Both signs, every exponent with a few mantissas, denormals, zeros, infinities and NaN.
inline std::vector<float> widePatterns()
{
    std::vector<float> values;
    for (uint32_t exponent = 0; exponent < 256; ++exponent) {
        for (const uint32_t mantissa : {0x000000u, 0x000001u, 0x2aaaabu, 0x400000u, 0x7fffffu}) {
            for (const uint32_t sign : {0u, 0x80000000u}) {
                const uint32_t bits = sign | exponent << 23 | mantissa;
                float value;
                std::memcpy(&value, &bits, sizeof value);
                values.push_back(value);
            }
        }
    }
    return values;
}

/// Colours of the range from 0 to scale, more of them around it, equal channels, and the wide patterns in all places.
inline Pixels probePixels(float scale)
{
    const std::vector<float> wide = widePatterns();
    std::mt19937 random(20261121);
    const auto below = [&](std::size_t count) { return random() % count; };
    const auto unit = [&] { return static_cast<float>(random() >> 8) / 16777216.f; };
    Pixels pixels;
    for (const float value : wide) {
        pixels.push_back({value, value, value, value});
        for (std::size_t channel = 0; channel < 4; ++channel) {
            Pixel pixel = {unit() * scale, unit() * scale, unit() * scale, unit() * scale};
            pixel[channel] = value;
            pixels.push_back(pixel);
        }
    }
    for (int i = 0; i < 40000; ++i) {
        Pixel pixel;
        const std::size_t kind = below(4);
        for (float& value : pixel) {
            if (kind == 0) value = wide[below(wide.size())];
            if (kind == 1) value = unit() * scale;
            if (kind == 2) value = (unit() * 3.f - 1.f) * scale;
            if (kind == 3) value = static_cast<float>(below(5)) * 0.25f * scale;
        }
        if (below(4) == 0) pixel[below(3)] = pixel[below(3)];
        pixels.push_back(pixel);
    }
    return pixels;
}

/// Compares a kernel with a slow computation of one pixel, out of place and in place.
inline void expectSamePixels(const Rendering::VirtualRenderer& renderer, const Pixels& source,
                             const std::function<Pixel(const Pixel&)>& expected)
{
    const Pixels apart = render(renderer, source);
    Pixels inPlace = source;
    renderer.render({inPlace.data()->data(), inPlace.data()->data(), static_cast<uint32_t>(inPlace.size()), 0, 0,
                     renderer.readDynamicValues()});
    int failures = 0;
    for (std::size_t i = 0; i < source.size() && failures < 10; ++i) {
        const Pixel wanted = expected(source[i]);
        const bool isRight = isSame(apart[i], wanted) && isSame(inPlace[i], apart[i]);
        if (!isRight) ++failures;
        EXPECT_TRUE(isRight) << "of " << textOf(source[i]) << ": " << textOf(apart[i]) << ", in place "
                             << textOf(inPlace[i]) << ", instead of " << textOf(wanted);
    }
}
