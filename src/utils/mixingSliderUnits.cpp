#include "morvane/mixingSliderUnits.h"

#include <algorithm>
#include <cmath>

namespace Morvane_2015_1_42 {

namespace {

// The square root ends, and the logarithm begins, at this mixing value and at the slider value of it.
constexpr float BREAK_MIXING = 0.18f;
constexpr float BREAK_SLIDER = 0.42426407f;

constexpr float LOG_GAIN = 0.55f;
constexpr float LOG_OFFSET = 0.8338642f;

/// The edges are kept this far apart.
constexpr double EDGE_SEPARATION = 0.01;

float sliderFromMixing(float v)
{
    if (v > BREAK_MIXING) return std::log10(v) * LOG_GAIN + LOG_OFFSET;
    if (v > 0.0f) return std::pow(v, 0.5f);
    return v * 0.5f;
}

float mixingFromSlider(float x)
{
    if (x > BREAK_SLIDER) return std::pow(10.0f, (x - LOG_OFFSET) / LOG_GAIN);
    if (x > 0.0f) return x * x;
    return x * 2.0f;
}

} // namespace

MixingSliderUnits::MixingSliderUnits() : m_minEdge(0.0f), m_maxEdge(1.0f) {}

MixingSliderUnits::MixingSliderUnits(float minEdge, float maxEdge) : MixingSliderUnits()
{
    setSliderMinEdge(minEdge);
    setSliderMaxEdge(maxEdge);
}

MixingSliderUnits::MixingSliderUnits(const MixingSliderUnits& other) = default;
MixingSliderUnits& MixingSliderUnits::operator=(const MixingSliderUnits& other) = default;

float MixingSliderUnits::getSliderMinEdge() const { return m_minEdge; }
float MixingSliderUnits::getSliderMaxEdge() const { return m_maxEdge; }

void MixingSliderUnits::setSliderMinEdge(float mixingValue)
{
    const double kept = std::min<double>(mixingValue, m_maxEdge - EDGE_SEPARATION);
    m_minEdge = sliderFromMixing(static_cast<float>(kept));
}

void MixingSliderUnits::setSliderMaxEdge(float mixingValue)
{
    const double kept = std::max<double>(mixingValue, m_minEdge + EDGE_SEPARATION);
    m_maxEdge = sliderFromMixing(static_cast<float>(kept));
}

float MixingSliderUnits::mixingToSlider(float mixingValue) const
{
    return (sliderFromMixing(mixingValue) - m_minEdge) / (m_maxEdge - m_minEdge);
}

float MixingSliderUnits::sliderToMixing(float sliderValue) const
{
    return mixingFromSlider((m_maxEdge - m_minEdge) * sliderValue + m_minEdge);
}

} // namespace Morvane_2015_1_42
