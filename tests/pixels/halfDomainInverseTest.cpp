#include "tests/pixels/rendering.h"

#include <algorithm>
#include <cmath>

namespace PixelTest {
namespace {

using namespace Morvane_2015_1_42;

// The library chooses how it interpolates between the half codes here, so mathematics in double precision takes the
// place of the twin.

using Function = std::function<double(double)>;

struct Curve
{
    const char* name;
    Function forward;
    Function inverse;
};

const double LARGEST_HALF = 65504;

const std::vector<Curve> CURVES = {
    {"power", [](double x) { return std::copysign(std::pow(std::abs(x), 0.7), x); },
     [](double y) { return std::copysign(std::pow(std::abs(y), 1 / 0.7), y); }},
    {"line", [](double x) { return 0.4 * x + 0.1; }, [](double y) { return (y - 0.1) / 0.4; }},
    {"falling", [](double x) { return -2 * x; }, [](double y) { return -y / 2; }},
    {"flatBelowZero", [](double x) { return x > 0 ? std::sqrt(x) : 0; }, [](double y) { return y > 0 ? y * y : 0; }}};

TransformPtr fastInverse(const Curve& curve, PixelFormat in)
{
    std::vector<float> values;
    for (size_t i = 0; i < 65536; ++i) {
        const float x = Twin::floatOfHalfBits(static_cast<uint16_t>(i));
        values.insert(values.end(), 3, static_cast<float>(curve.forward(static_cast<double>(x))));
    }
    Twin::InvLut1DOp op(BIT_DEPTH_32f, BIT_DEPTH_32f, std::move(values));
    op.isHalfDomain = true;
    op.isFast = true;
    return finalizedCopy(makeTransform(OpCase{curve.name, {op}}), in, PF_RGB_32f);
}

/// Renders a line of grey pixels with these red values; red of the result.
template <class Element>
std::vector<float> render(const Curve& curve, PixelFormat in, const std::vector<Element>& samples)
{
    std::vector<Element> source;
    for (const Element sample : samples)
        source.insert(source.end(), 3, sample);
    std::vector<float> destination(source.size());
    EXPECT_TRUE(fastInverse(curve, in)->apply(source.data(), lineOf(static_cast<unsigned>(samples.size())),
                                              destination.data()));
    std::vector<float> red;
    for (size_t i = 0; i < destination.size(); i += 3)
        red.push_back(destination[i]);
    return red;
}

void expectInverse(const Curve& curve, const std::vector<double>& inputs, const std::vector<float>& results)
{
    ASSERT_EQ(inputs.size(), results.size());
    for (size_t i = 0; i < inputs.size(); ++i) {
        const double wanted = std::clamp(curve.inverse(inputs[i]), -LARGEST_HALF, LARGEST_HALF);
        ASSERT_NEAR(results[i], wanted, 1e-5 * std::abs(wanted) + 1e-6) << inputs[i];
    }
}

std::ostream& operator<<(std::ostream& stream, const Curve& curve) { return stream << curve.name; }

class FastHalfDomainInverse : public testing::TestWithParam<Curve>
{};

TEST_P(FastHalfDomainInverse, findsTheInputOfTheCurveForEveryHalf)
{
    std::vector<uint16_t> codes;
    std::vector<double> inputs;
    for (unsigned code = 0; code < 65536; ++code) {
        if ((code & 0x7c00U) == 0x7c00U) continue;
        codes.push_back(static_cast<uint16_t>(code));
        inputs.push_back(static_cast<double>(Twin::floatOfHalfBits(codes.back())));
    }
    expectInverse(GetParam(), inputs, render(GetParam(), PF_RGB_16f, codes));
}

TEST_P(FastHalfDomainInverse, findsTheInputOfTheCurveForFloats)
{
    // Between the halves next to an end of the curve the table cannot show where it stops.
    const auto isAtAnEnd = [](float value) {
        const double v = static_cast<double>(value);
        for (const double end : {GetParam().forward(LARGEST_HALF), GetParam().forward(-LARGEST_HALF)})
            if (std::abs(v - end) < 0.001 * std::abs(end)) return true;
        return false;
    };
    std::vector<float> samples;
    for (float value = 1e-3F; value < 60000; value *= 1.0007F)
        for (const float sample : {value, -value})
            if (!isAtAnEnd(sample)) samples.push_back(sample);
    expectInverse(GetParam(), std::vector<double>(samples.begin(), samples.end()),
                  render(GetParam(), PF_RGB_32f, samples));
}

TEST_P(FastHalfDomainInverse, findsTheInputOfTheCurveForEveryByte)
{
    std::vector<uint8_t> codes;
    std::vector<double> inputs;
    for (unsigned code = 0; code < 256; ++code) {
        codes.push_back(static_cast<uint8_t>(code));
        inputs.push_back(code / 255.0);
    }
    expectInverse(GetParam(), inputs, render(GetParam(), PF_RGB_8i, codes));
}

INSTANTIATE_TEST_SUITE_P(Curves, FastHalfDomainInverse, testing::ValuesIn(CURVES),
                         [](const auto& curve) { return std::string(curve.param.name); });

} // namespace
} // namespace PixelTest
