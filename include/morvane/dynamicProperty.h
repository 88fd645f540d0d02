#pragma once

#include "morvane/export.h"

#include <cstdint>

namespace Morvane_2015_1_42 {

/// Carries a value that can change after finalize() into a transform and out of it. The transform holds the real
/// property; setDynamicProperty() and getDynamicProperty() copy between the two. A changed value takes effect at the
/// next line of an image that is being rendered.
class MORVANE_API DynamicProperty
{
public:
    enum Ids : uint32_t
    {
        EXPOSURE = 0, ///< stops, 0 = unchanged
        CONTRAST = 1, ///< factor around the pivot, 1 = unchanged
        BYPASS = 2,   ///< 0 or 1: the op passes its pixels unchanged
    };

    /// A carrier for the given property, with the value 0.
    explicit DynamicProperty(Ids id);
    DynamicProperty(const DynamicProperty& other);
    DynamicProperty& operator=(const DynamicProperty& other);

    /// "Exposure", "Contrast", "Bypass"; "invalid property" for any other id. A constant text.
    static const char* getName(Ids id);

    Ids getId() const;
    double getValue() const;
    void setValue(double value);

private:
    Ids m_id;
    double m_value;
};

} // namespace Morvane_2015_1_42
