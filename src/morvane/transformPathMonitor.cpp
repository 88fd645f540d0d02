#include "morvane/transformPathMonitor.h"

#include "morvane/morvaneTransformPathMonitor.h"
#include "utils/statusImpl.h"
#include "utils/text.h"

#include <utility>

namespace Morvane_2015_1_42 {

namespace {

void requireParameter(const void* pointer)
{
    if (!pointer) Color::raise(Color::LogCategory::MORVANE_PATH, Color::ErrorIds::PATH_INVALID_PARAMETER);
}

} // namespace

TransformPathMonitor::Callback::Callback() = default;
TransformPathMonitor::Callback::Callback(const Callback&) = default;
TransformPathMonitor::Callback& TransformPathMonitor::Callback::operator=(const Callback&) = default;
TransformPathMonitor::Callback::~Callback() = default;

TransformPathMonitor::TransformPathMonitor(const char* path)
    : m_monitor(new Impl::MorvaneTransformPathMonitor(Color::orEmpty(path)))
{}

TransformPathMonitor::TransformPathMonitor(const TransformPathMonitor& other)
    : m_monitor(new Impl::MorvaneTransformPathMonitor(*other.m_monitor))
{}

TransformPathMonitor& TransformPathMonitor::operator=(const TransformPathMonitor& other)
{
    TransformPathMonitor copy(other);
    std::swap(m_monitor, copy.m_monitor);
    return *this;
}

TransformPathMonitor::~TransformPathMonitor() { delete m_monitor; }

const char* TransformPathMonitor::getPath() const { return m_monitor->getPath().c_str(); }

MorvaneStatus TransformPathMonitor::setPath(const char* path)
{
    return Color::statusOf([&] {
        requireParameter(path);
        m_monitor->setPath(path);
    });
}

MorvaneStatus TransformPathMonitor::listDirectories(const char* relative, Callback& callback)
{
    return Color::statusOf([&] {
        requireParameter(relative);
        const auto content = m_monitor->getContent(relative); // held, whatever the callback does to the monitor
        for (const std::string& name : content->directories)
            callback.onEntry(name.c_str());
    });
}

MorvaneStatus TransformPathMonitor::listFiles(const char* relative, Callback& callback)
{
    return Color::statusOf([&] {
        requireParameter(relative);
        const auto content = m_monitor->getContent(relative);
        for (const std::string& name : content->files)
            callback.onEntry(name.c_str());
    });
}

MorvaneStatus TransformPathMonitor::getFileFullPath(const char* relative, const char* fileName, char* buffer,
                                                    unsigned length)
{
    return Color::statusOf([&] {
        requireParameter(relative);
        requireParameter(fileName);
        requireParameter(buffer);
        const std::string path = m_monitor->getFileFullPath(relative, fileName);
        if (length > 0) buffer[path.copy(buffer, length - 1)] = '\0';
    });
}

} // namespace Morvane_2015_1_42
