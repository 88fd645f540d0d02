#include "morvane/dynamicProperty.h"

namespace Morvane_2015_1_42 {

DynamicProperty::DynamicProperty(Ids id) : m_id(id), m_value(0.0) {}

DynamicProperty::DynamicProperty(const DynamicProperty& other) = default;
DynamicProperty& DynamicProperty::operator=(const DynamicProperty& other) = default;

const char* DynamicProperty::getName(Ids id)
{
    switch (id) {
    case EXPOSURE:
        return "Exposure";
    case CONTRAST:
        return "Contrast";
    case BYPASS:
        return "Bypass";
    }
    return "invalid property";
}

DynamicProperty::Ids DynamicProperty::getId() const { return m_id; }

double DynamicProperty::getValue() const { return m_value; }

void DynamicProperty::setValue(double value) { m_value = value; }

} // namespace Morvane_2015_1_42
