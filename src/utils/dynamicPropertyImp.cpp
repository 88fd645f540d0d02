#include "utils/dynamicPropertyImp.h"

#include "utils/exception.h"

#include <type_traits>

namespace Color {

BaseDynamicProperty::~BaseDynamicProperty() = default;

void validateDynamicProperty(const DynamicProperty& carrier)
{
    if (carrier.getId() > DynamicProperty::BYPASS)
        raise(LogCategory::UTILS_DYNAMIC_PROP, ErrorIds::DYNAMIC_PROPERTY_INVALID_ID);
}

template <class T>
DynamicProperty DynamicPropertyImp<T>::getValue() const
{
    DynamicProperty carrier(m_id);
    carrier.setValue(static_cast<double>(this->get()));
    return carrier;
}

template <class T>
const char* DynamicPropertyImp<T>::getName() const
{
    return DynamicProperty::getName(m_id);
}

template <class T>
DynamicProperty::Ids DynamicPropertyImp<T>::getId() const
{
    return m_id;
}

template <class T>
void DynamicPropertyImp<T>::read(DynamicProperty& carrier) const
{
    checkAccess(carrier);
    carrier = getValue();
}

template <class T>
void DynamicPropertyImp<T>::write(const DynamicProperty& carrier)
{
    checkAccess(carrier);
    if constexpr (std::is_same_v<Value, bool>)
        this->set(carrier.getValue() != 0.0);
    else
        this->set(carrier.getValue());
}

template <class T>
void DynamicPropertyImp<T>::checkAccess(const DynamicProperty& carrier) const
{
    if (!hasId(carrier.getId()) || !m_isDynamic)
        raise(LogCategory::UTILS_DYNAMIC_PROP, ErrorIds::DYNAMIC_PROPERTY_INVALID, getName());
}

template class DynamicPropertyImp<DynamicPropertyDouble>;
template class DynamicPropertyImp<DynamicPropertyBool>;

} // namespace Color
