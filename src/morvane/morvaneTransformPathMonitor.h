#pragma once

#include "morvane/directoryListing.h"

#include <map>
#include <string>

namespace Morvane_2015_1_42::Impl {

/// What is behind a TransformPathMonitor: a root, and the listings of the directories below it that were asked for.
class MorvaneTransformPathMonitor
{
public:
    explicit MorvaneTransformPathMonitor(std::string path);

    const std::string& getPath() const { return m_path; }
    /// Forgets all listings.
    void setPath(std::string path);

    /// What the directory holds now. Fails as DirectoryListing::getContent() does.
    DirectoryListing::ContentPtr getContent(const std::string& relative);

    std::string getFileFullPath(const char* relative, const char* fileName) const;

private:
    std::string m_path;
    std::map<std::string, DirectoryListing> m_listings; ///< by relative path
};

} // namespace Morvane_2015_1_42::Impl
