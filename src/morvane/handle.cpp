#include "morvane/handle.h"

#include "morvane/gpuAdaptor.h"
#include "morvane/transform.h"

#include <atomic>
#include <memory>
#include <utility>

namespace Morvane_2015_1_42 {

template <class T>
struct Handle<T>::Count
{
    std::atomic<long> uses{1};
};

template <class T>
Handle<T>::Handle() : m_object(nullptr), m_count(nullptr)
{}

template <class T>
Handle<T>::Handle(T* object) : m_object(object), m_count(nullptr)
{
    if (!object) return;
    std::unique_ptr<T> guard(object);
    m_count = new Count;
    static_cast<void>(guard.release());
}

template <class T>
Handle<T>::Handle(const Handle& other) : m_object(other.m_object), m_count(other.m_count)
{
    if (m_count) m_count->uses.fetch_add(1, std::memory_order_relaxed);
}

template <class T>
Handle<T>::~Handle()
{
    // Whoever deletes must see everything that other threads did through their handles, hence acquire and release.
    if (m_count && m_count->uses.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete m_object;
        delete m_count;
    }
}

template <class T>
Handle<T>& Handle<T>::operator=(const Handle& other)
{
    if (m_count == other.m_count) return *this;
    Handle copy(other);
    std::swap(m_object, copy.m_object);
    std::swap(m_count, copy.m_count);
    return *this;
}

template <class T>
long Handle<T>::getUseCount() const
{
    return m_count ? m_count->uses.load(std::memory_order_relaxed) : 0;
}

template <class T>
void Handle<T>::reset()
{
    *this = Handle();
}

template <class T>
void Handle<T>::reset(T* object)
{
    *this = Handle(object);
}

template class Handle<GPUAdaptor>;
template class Handle<Transform>;

} // namespace Morvane_2015_1_42
