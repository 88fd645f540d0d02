#include "morvane/morvaneTransformPathMonitor.h"

#include <boost/filesystem/path.hpp>
#include <utility>

namespace Morvane_2015_1_42::Impl {

namespace fs = boost::filesystem;

MorvaneTransformPathMonitor::MorvaneTransformPathMonitor(std::string path) : m_path(std::move(path)) {}

void MorvaneTransformPathMonitor::setPath(std::string path)
{
    m_path = std::move(path);
    m_listings.clear();
}

DirectoryListing::ContentPtr MorvaneTransformPathMonitor::getContent(const std::string& relative)
{
    DirectoryListing& listing = m_listings[relative];
    listing.setPath((fs::path(m_path) / relative).string());
    return listing.getContent();
}

std::string MorvaneTransformPathMonitor::getFileFullPath(const char* relative, const char* fileName) const
{
    return (fs::path(m_path) / relative / fileName).string();
}

} // namespace Morvane_2015_1_42::Impl
