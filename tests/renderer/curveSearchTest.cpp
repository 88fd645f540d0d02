#include "renderer/curveSearch.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace Rendering;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Crossing
{
    uint32_t position;
    float fraction;
};

/// The definition, with the standard library's search over all values but the last.
Crossing search(std::vector<float> curve, bool isIncreasing, float value)
{
    if (!isIncreasing) {
        for (float& entry : curve)
            entry = -entry;
        value = -1.f * value;
    }
    if (curve.front() > value) value = curve.front();
    if (value > curve.back()) value = curve.back();
    // Not std::lower_bound: a NaN is below nothing, and finds the first entry.
    const auto end = curve.end() - 1;
    const auto found = std::partition_point(curve.begin(), end, [&](float entry) { return value > entry; });
    const auto at = found == curve.begin() ? found : found - 1;
    const auto position = static_cast<uint32_t>(at - curve.begin());
    if (at == curve.end() - 1 || !(at[1] > at[0])) return {position, 0.f};
    return {position, (value - at[0]) / (at[1] - at[0])};
}

/// Values on, beside and far from every entry, and at random between the ends.
std::vector<float> probesOf(const std::vector<float>& curve)
{
    std::vector<float> probes = {0.f, -0.f, 1e-45f, -1e-45f, 1e38f, -1e38f, kInfinity, -kInfinity, kNaN};
    for (const float entry : curve) {
        probes.insert(probes.end(),
                      {entry, -entry, std::nextafter(entry, kInfinity), std::nextafter(entry, -kInfinity)});
    }
    const auto [low, high] = std::minmax_element(curve.begin(), curve.end());
    if (std::isfinite(*low) && std::isfinite(*high)) {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> uniform(*low, *high);
        for (int i = 0; i < 2000; ++i)
            probes.push_back(static_cast<float>(uniform(random)));
    }
    while (probes.size() % CurveSearch::kBlock != 0)
        probes.push_back(0.5f);
    return probes;
}

void expectFindsAll(const std::vector<float>& curve, bool isIncreasing)
{
    const CurveSearch curveSearch(curve, isIncreasing);
    const std::vector<float> probes = probesOf(curve);
    for (std::size_t first = 0; first < probes.size(); first += CurveSearch::kBlock) {
        float values[CurveSearch::kBlock];
        std::memcpy(values, probes.data() + first, sizeof values);
        CurveSearch::Crossings crossings;
        curveSearch.find(values, crossings);
        for (std::size_t i = 0; i < CurveSearch::kBlock; ++i) {
            const Crossing expected = search(curve, isIncreasing, values[i]);
            ASSERT_EQ(crossings.positions[i], expected.position) << values[i];
            if (std::isnan(expected.fraction)) {
                ASSERT_TRUE(std::isnan(crossings.fractions[i])) << values[i];
            } else {
                ASSERT_EQ(crossings.fractions[i], expected.fraction) << values[i];
            }
        }
    }
}

std::vector<float> power(std::size_t length, double exponent, double scale = 1.0, double offset = 0.0)
{
    std::vector<float> curve;
    for (std::size_t i = 0; i < length; ++i) {
        const double x = static_cast<double>(i) / static_cast<double>(length - 1);
        curve.push_back(static_cast<float>(std::pow(x, exponent) * scale + offset));
    }
    return curve;
}

std::vector<float> reversed(std::vector<float> curve)
{
    std::reverse(curve.begin(), curve.end());
    return curve;
}

} // namespace

TEST(CurveSearch, findsValuesOfRisingCurves)
{
    for (const double exponent : {0.1, 0.45, 1.0, 2.2, 10.0}) {
        for (const std::size_t length : {2U, 3U, 5U, 64U, 1024U, 4099U}) {
            SCOPED_TRACE(testing::Message() << length << " entries, exponent " << exponent);
            expectFindsAll(power(length, exponent), true);
            expectFindsAll(power(length, exponent, 1023.0, -512.0), true);
        }
    }
}

TEST(CurveSearch, findsValuesOfFallingCurves)
{
    expectFindsAll(reversed(power(1024, 0.45)), false);
    expectFindsAll(reversed(power(33, 3.0, 255.0, -20.0)), false);
}

TEST(CurveSearch, findsTheStartOfLevelStretches)
{
    expectFindsAll({0.f, 0.25f, 0.25f, 0.25f, 0.5f, 0.5f, 1.f}, true);
    expectFindsAll({0.f, 1.f, 1.f, 1.f, 1.f, 1.f, 1.f, 1.f}, true);
    expectFindsAll({0.f, 0.f, 0.f, 0.f, 0.f, 0.f, 1.f}, true);
    expectFindsAll({2.f, 2.f, 2.f}, false);
    expectFindsAll({0.75f}, false);
}

TEST(CurveSearch, findsValuesThatCrowdInOneBucket)
{
    std::vector<float> curve = power(500, 1.0, 1e-6);
    curve.push_back(1000.f);
    expectFindsAll(curve, true);
}

TEST(CurveSearch, findsValuesOfCurvesWithoutFiniteEndsOrRange)
{
    expectFindsAll({-kInfinity, 0.f, 1.f, kInfinity}, true);
    expectFindsAll({0.f, 1.f, 2.f, kInfinity}, true);
    expectFindsAll({-kInfinity, -1.f, 0.f}, true);
    constexpr float largest = std::numeric_limits<float>::max();
    expectFindsAll({-largest, 0.f, largest}, true);
    expectFindsAll({0.f, 1e-45f, 3e-45f}, true);
}

TEST(CurveSearch, findsValuesOfCurvesTooLongForBuckets)
{
    const CurveSearch curveSearch(power(70001, 2.0), true);
    float values[CurveSearch::kBlock] = {};
    for (std::size_t i = 0; i < CurveSearch::kBlock; ++i)
        values[i] = static_cast<float>(i) / 63.f;
    CurveSearch::Crossings crossings;
    curveSearch.find(values, crossings);
    for (std::size_t i = 0; i < CurveSearch::kBlock; ++i) {
        const Crossing expected = search(power(70001, 2.0), true, values[i]);
        ASSERT_EQ(crossings.positions[i], expected.position);
        ASSERT_EQ(crossings.fractions[i], expected.fraction);
    }
}
