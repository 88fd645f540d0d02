#include "xml/fileExtension.h"

#include <boost/filesystem/path.hpp>

namespace Color {

std::string getFileExtension(const std::string& path)
{
    const std::string extension = boost::filesystem::path(path).extension().string();
    return extension.empty() ? extension : extension.substr(1);
}

} // namespace Color
