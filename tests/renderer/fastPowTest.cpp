#include "renderer/fastPow.h"

#include "kernelProbe.h"
#include "scalarPow.h"

#include <algorithm>

using namespace Rendering;

namespace {

float log2Of(float x) { return _mm_cvtss_f32(fastLog2(V4f(x)).v); }
float exp2Of(float y) { return _mm_cvtss_f32(fastExp2(V4f(y)).v); }
float powOf(float x, float g) { return _mm_cvtss_f32(fastPow(V4f(x), V4f(g)).v); }

/// Calls check(x) for floats of all kinds: every n-th bit pattern, and the wide ones.
template <class Check>
void forFloats(uint32_t n, Check check)
{
    for (uint64_t bits = 0; bits <= 0xffffffff; bits += n) {
        check(floatOf(static_cast<uint32_t>(bits)));
    }
    for (const float x : widePatterns()) {
        check(x);
    }
}

/// Worst and mean of what is added, without regard to sign.
class Errors
{
public:
    void add(double error)
    {
        m_worst = std::max(m_worst, std::abs(error));
        m_sum += std::abs(error);
        ++m_count;
    }

    double worst() const { return m_worst; }
    double mean() const { return m_sum / m_count; }

private:
    double m_worst = 0.0;
    double m_sum = 0.0;
    int m_count = 0;
};

} // namespace

TEST(FastPow, theLogarithmIsThePolynomialForEveryMantissaAndExponent)
{
    int failures = 0;
    for (uint32_t bits = 0x3f800000; bits < 0x40000000; bits += 3) {
        if (!isSame(log2Of(floatOf(bits)), scalarLog2(floatOf(bits)))) ++failures;
    }
    // Positive normal floats.
    for (uint32_t bits = 0x00800000; bits < 0x7f800000; bits += 4999) {
        if (!isSame(log2Of(floatOf(bits)), scalarLog2(floatOf(bits)))) ++failures;
    }
    EXPECT_EQ(failures, 0);
}

TEST(FastPow, theExponentialIsThePolynomialForEveryFloat)
{
    int failures = 0;
    forFloats(997, [&](float y) {
        if (!isSame(exp2Of(y), scalarExp2(y))) ++failures;
    });
    for (float y = -130.f; y <= 130.f; y += 1.f / 1024.f) {
        if (!isSame(exp2Of(y), scalarExp2(y))) ++failures;
    }
    EXPECT_EQ(failures, 0);
}

TEST(FastPow, thePowerIsThePolynomialsForEveryFloat)
{
    int failures = 0;
    for (const float g : {0.f, 0.1f, 1.f / 2.2f, 1.f, 2.4f, 10.f, 1000.f, -1.f, -2.2f, kInfinity, -kInfinity, kNaN}) {
        forFloats(9973, [&](float x) {
            if (!isSame(powOf(x, g), scalarPow(x, g))) ++failures;
        });
    }
    EXPECT_EQ(failures, 0);
}

TEST(FastPow, everyLaneHasItsOwnValueAndExponent)
{
    Pixel result{};
    store(result.data(), fastPow(V4f(0.25f, 4.f, -1.f, 0.5f), V4f(0.5f, 1.5f, 2.f, 3.f)));
    EXPECT_EQ(result, (Pixel{scalarPow(0.25f, 0.5f), scalarPow(4.f, 1.5f), 0.f, scalarPow(0.5f, 3.f)}));
}

TEST(FastPow, theExponentialSaturates)
{
    for (const float y : {128.f, 129.f, 2147483520.f, 2147483648.f, 1e20f, kLargest, kInfinity}) {
        EXPECT_EQ(exp2Of(y), kInfinity) << y;
    }
    for (const float y : {-126.f, -127.f, -128.f, -2147483648.f, -1e20f, -kLargest, -kInfinity, kNaN}) {
        EXPECT_EQ(bitsOf(exp2Of(y)), 0u) << y;
    }
    EXPECT_LT(exp2Of(std::nextafter(128.f, 0.f)), kInfinity);
    EXPECT_GE(exp2Of(std::nextafter(-126.f, 0.f)), 1.1754944e-38f);
}

TEST(FastPow, aNegativeWholeExponentTakesTheEndOfThePolynomialBelow)
{
    // The fraction is 1: the sum of the coefficients, 1.9999948, times 2 to the power of y - 1.
    EXPECT_NEAR(exp2Of(-1.f), 1.9999948f * 0.25f, 1e-7f);
    EXPECT_NEAR(exp2Of(-3.f), 1.9999948f * 0.0625f, 1e-8f);
    // The fraction is 0: the last coefficient.
    EXPECT_EQ(exp2Of(0.f), 1.0000026f);
    EXPECT_EQ(exp2Of(-0.f), 1.0000026f);
    EXPECT_EQ(exp2Of(3.f), 1.0000026f * 8.f);
}

TEST(FastPow, thePowerOfZeroNegativesAndNaNIsZero)
{
    for (const float x : {0.f, -0.f, -1e-45f, -1.f, -kLargest, -kInfinity, kNaN, -kNaN}) {
        for (const float g : {0.f, 0.5f, 1.f, 2.f, -1.f, kNaN}) {
            EXPECT_EQ(bitsOf(powOf(x, g)), 0u) << x << " to the power of " << g;
        }
    }
}

TEST(FastPow, theLogarithmIsCloseToTheExactOne)
{
    Errors errors;
    for (double exponent = -126.0; exponent < 128.0; exponent += 0.00037) {
        const auto x = static_cast<float>(std::exp2(exponent));
        errors.add(double{log2Of(x)} - std::log2(double{x}));
    }
    EXPECT_LT(errors.worst(), 1.8e-5);
    EXPECT_LT(errors.mean(), 8.2e-6);
}

TEST(FastPow, theExponentialIsCloseToTheExactOne)
{
    Errors errors;
    for (double y = -125.9999; y < 128.0; y += 0.00037) {
        const auto single = static_cast<float>(y);
        errors.add(double{exp2Of(single)} / std::exp2(double{single}) - 1.0);
    }
    EXPECT_LT(errors.worst(), 2.7e-6);
    EXPECT_LT(errors.mean(), 1.7e-6);
}

TEST(FastPow, theErrorOfThePowerGrowsWithTheExponent)
{
    struct Bound
    {
        float exponent;
        double worst, mean;
    };
    for (const Bound& bound :
         {Bound{1.f / 2.4f, 6.7e-6, 2.7e-6}, Bound{1.f / 2.2f, 7.1e-6, 2.9e-6}, Bound{1.f, 1.25e-5, 6.5e-6},
          Bound{2.2f, 2.5e-5, 1.25e-5}, Bound{2.4f, 2.7e-5, 1.35e-5}, Bound{10.f, 1.05e-4, 5.6e-5}}) {
        Errors errors;
        for (int i = 1; i <= 1000000; ++i) {
            const float x = static_cast<float>(i) / 1000000.f;
            const double exact = std::pow(double{x}, double{bound.exponent});
            if (exact > 1e-37) errors.add(double{powOf(x, bound.exponent)} / exact - 1.0);
        }
        EXPECT_LT(errors.worst(), bound.worst) << bound.exponent;
        EXPECT_LT(errors.mean(), bound.mean) << bound.exponent;
    }
}

TEST(FastPow, theLibrarysPowIsCalledForParameters)
{
    const volatile float two = 2.f;
    for (float exponent = -10.f; exponent < 10.f; exponent += 0.0173f) {
        EXPECT_EQ(libraryPow(2.f, exponent), std::pow(two, exponent));
    }
}
