#pragma once

#include "morvane/export.h"

namespace Morvane_2015_1_42 {

/// Maps a scene-linear mixing value to the units of a host's slider and back, so that equal steps of the slider look
/// about equal. The curve f(v) behind it:
///
///     v * 0.5                          for v <= 0
///     sqrt(v)                          for 0 < v <= 0.18
///     log10(v) * 0.55 + 0.8338642      for v > 0.18
///
/// The edges are kept in slider units, that is after the curve; a default object has the edges 0 and 1.
class MORVANE_API MixingSliderUnits
{
public:
    MixingSliderUnits();

    /// Starts from the edges 0 and 1, then sets the minimum edge, then the maximum edge.
    MixingSliderUnits(float minEdge, float maxEdge);

    MixingSliderUnits(const MixingSliderUnits& other);
    MixingSliderUnits& operator=(const MixingSliderUnits& other);

    /// The stored edge, in slider units: f of what was set.
    float getSliderMinEdge() const;
    float getSliderMaxEdge() const;

    /// Takes a mixing value. It is first kept 0.01 below the stored maximum edge: the mixing value is compared with an
    /// edge in slider units, and hosts rely on that.
    void setSliderMinEdge(float mixingValue);

    /// Takes a mixing value. It is first kept 0.01 above the stored minimum edge, compared in the same way.
    void setSliderMaxEdge(float mixingValue);

    /// (f(v) - minimum edge) / (maximum edge - minimum edge).
    float mixingToSlider(float mixingValue) const;

    /// The inverse of mixingToSlider().
    float sliderToMixing(float sliderValue) const;

private:
    float m_minEdge;
    float m_maxEdge;
};

} // namespace Morvane_2015_1_42
