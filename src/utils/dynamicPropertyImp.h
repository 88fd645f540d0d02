#pragma once

#include "utils/publicTypes.h"

#include <atomic>

namespace Color {

class BaseDynamicProperty
{
public:
    virtual ~BaseDynamicProperty();
};

/// The typed value of a property. A host writes it while render threads read it, so it is atomic; no order is promised
/// beyond that.
class DynamicPropertyDouble : public BaseDynamicProperty
{
public:
    using Value = double;
    explicit DynamicPropertyDouble(double value) : m_value(value) {}
    DynamicPropertyDouble(const DynamicPropertyDouble& other) : BaseDynamicProperty(other), m_value(other.get()) {}
    DynamicPropertyDouble& operator=(const DynamicPropertyDouble&) = delete;
    double get() const { return m_value.load(std::memory_order_relaxed); }
    void set(double value) { m_value.store(value, std::memory_order_relaxed); }

private:
    std::atomic<double> m_value;
};

class DynamicPropertyBool : public BaseDynamicProperty
{
public:
    using Value = bool;
    explicit DynamicPropertyBool(bool value) : m_value(value) {}
    DynamicPropertyBool(const DynamicPropertyBool& other) : BaseDynamicProperty(other), m_value(other.get()) {}
    DynamicPropertyBool& operator=(const DynamicPropertyBool&) = delete;
    bool get() const { return m_value.load(std::memory_order_relaxed); }
    void set(bool value) { m_value.store(value, std::memory_order_relaxed); }

private:
    std::atomic<bool> m_value;
};

/// Throws 0x1030001 when the carrier's id is no property.
void validateDynamicProperty(const DynamicProperty& carrier);

/// A value of an op that a host may change after finalize, once it is made dynamic.
template <class T>
class DynamicPropertyImp : public T
{
public:
    using Value = typename T::Value;

    DynamicPropertyImp(DynamicProperty::Ids id, Value value) : T(value), m_id(id) {}

    virtual DynamicProperty getValue() const;
    virtual const char* getName() const;
    virtual DynamicProperty::Ids getId() const;

    bool hasId(DynamicProperty::Ids id) const { return id == m_id; }
    bool isDynamic() const { return m_isDynamic; }
    void makeDynamic() { m_isDynamic = true; }

    /// Copies the value out to, or in from, the carrier. Both throw 0x1030002 with this property's name when the
    /// carrier has another id or this property is not dynamic.
    void read(DynamicProperty& carrier) const;
    void write(const DynamicProperty& carrier);

private:
    void checkAccess(const DynamicProperty& carrier) const;

    DynamicProperty::Ids m_id;
    bool m_isDynamic = false;
};

class ExposureDynamicProperty : public DynamicPropertyImp<DynamicPropertyDouble>
{
public:
    explicit ExposureDynamicProperty(double value) : DynamicPropertyImp(DynamicProperty::EXPOSURE, value) {}
};

class ContrastDynamicProperty : public DynamicPropertyImp<DynamicPropertyDouble>
{
public:
    explicit ContrastDynamicProperty(double value) : DynamicPropertyImp(DynamicProperty::CONTRAST, value) {}
};

class BypassDynamicProperty : public DynamicPropertyImp<DynamicPropertyBool>
{
public:
    BypassDynamicProperty() : DynamicPropertyImp(DynamicProperty::BYPASS, false) {}
};

extern template class DynamicPropertyImp<DynamicPropertyDouble>;
extern template class DynamicPropertyImp<DynamicPropertyBool>;

} // namespace Color
