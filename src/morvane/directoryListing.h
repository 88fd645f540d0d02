#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Morvane_2015_1_42::Impl {

/// What one directory holds for a browser of transforms. It is read when asked for, and again when the directory's time
/// has changed.
class DirectoryListing
{
public:
    /// Names without a path, in ascending order of their bytes.
    struct Content
    {
        std::filesystem::file_time_type time; ///< of the directory's last change before it was read
        std::vector<std::string> directories;
        std::vector<std::string> files; ///< those whose extension is one that can be read, in any case
    };
    /// What a caller holds stays as it is when the directory is read again.
    using ContentPtr = std::shared_ptr<const Content>;

    /// Forgets what was read, unless the path is the present one. Separators "/" and "\" count as equal.
    void setPath(const std::string& path);

    /// Throws 0x6020001 when there is nothing at the path, 0x6020002 when it is no directory, 0x6020003 when the
    /// directory cannot be read, 0x3060004 when the file system fails otherwise. What was read is then forgotten: the
    /// same time does not make up for it.
    ContentPtr getContent();

private:
    std::string m_path;
    ContentPtr m_content; ///< null when the directory has not been read
};

} // namespace Morvane_2015_1_42::Impl
