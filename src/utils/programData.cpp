#include "utils/programData.h"

#include <boost/filesystem/operations.hpp>
#include <dlfcn.h>

namespace Color {

namespace {

namespace fs = boost::filesystem;

/// The directory of the file that this code was loaded from, links resolved; empty when it is not to be found.
fs::path findLibraryDirectory()
{
    static const char partOfLibrary = 0;
    Dl_info library{};
    if (!dladdr(&partOfLibrary, &library) || !library.dli_fname) return {};
    boost::system::error_code ignored;
    return fs::canonical(library.dli_fname, ignored).parent_path();
}

std::string findProgramData()
{
    const fs::path fromLibrary = MORVANE_DATA_FROM_LIBRARY;
    if (fromLibrary.empty()) return MORVANE_FULL_DATA_ROOT;
    const fs::path directory = findLibraryDirectory();
    if (directory.empty()) return MORVANE_FULL_DATA_ROOT;
    return (directory / fromLibrary).lexically_normal().generic_string();
}

} // namespace

const std::string& getProgramData()
{
    static const std::string path = findProgramData();
    return path;
}

} // namespace Color
