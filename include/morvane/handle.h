#pragma once

#include "morvane/export.h"

namespace Morvane_2015_1_42 {

/// Shared ownership of an object of the library: the last handle deletes the object. Counts are atomic, so handles to
/// one object may be copied and dropped on several threads; one handle is not to be changed by two threads at once.
template <class T>
class MORVANE_API Handle
{
public:
    /// A null handle.
    Handle();
    /// Takes over the object, also when it throws for want of memory. Give one object to one handle only.
    Handle(T* object);
    Handle(const Handle& other);
    ~Handle();
    Handle& operator=(const Handle& other);

    /// True when the handle holds an object.
    operator bool() const { return m_object != nullptr; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    T* get() const { return m_object; }

    /// Number of handles to the object, 0 for a null handle.
    long getUseCount() const;

    void reset();
    void reset(T* object);

private:
    struct Count;

    T* m_object;
    Count* m_count;
};

} // namespace Morvane_2015_1_42
