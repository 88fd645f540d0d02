#include "xml/pathRepair.h"

#include "utils/exception.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <optional>

namespace Color {

namespace {

namespace fs = boost::filesystem;

/// The directories below which every installation keeps its releases.
constexpr const char* kMarker = "Brelwick/Tandrel/Morvane/";

/// What follows the marker.
std::optional<std::string> findRemainder(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    const std::string marker = kMarker;
    const std::size_t position = path.find(marker);
    if (position == std::string::npos) return std::nullopt;
    return path.substr(position + marker.size());
}

fs::path withoutFirst(const fs::path& path)
{
    fs::path rest;
    if (path.empty()) return rest;
    for (auto component = std::next(path.begin()); component != path.end(); ++component)
        rest /= *component;
    return rest;
}

/// Whether something lies at the path; nothing to look for does not.
bool exists(const fs::path& base, const fs::path& remainder)
{
    return !remainder.empty() && fs::exists(base / remainder);
}

} // namespace

std::string repairInstalledPath(const std::string& path, const std::string& systemHome)
{
    const std::optional<std::string> found = findRemainder(path);
    if (!found) return path;
    try {
        const fs::path home(systemHome.substr(0, systemHome.find_last_not_of("/\\") + 1));
        const fs::path base = home.parent_path();
        const fs::path remainder(*found);
        if (exists(base, remainder)) return (base / remainder).generic_string();

        const fs::path ofThisRelease = withoutFirst(remainder);
        if (exists(base / home.filename(), ofThisRelease)) {
            return (base / home.filename() / ofThisRelease).generic_string();
        }
    } catch (const fs::filesystem_error& error) {
        raise(LogCategory::XML_IO_READER, ErrorIds::FILE_SYSTEM_ERROR, path, error.what());
    }
    return path;
}

} // namespace Color
