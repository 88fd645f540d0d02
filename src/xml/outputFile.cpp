#include "xml/outputFile.h"

#include "utils/exception.h"

#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace Color {

namespace {

[[noreturn]] void raiseNotOpened(const std::string& fileName)
{
    namespace fs = boost::filesystem;
    try {
        if (fs::is_regular_file(fileName)) {
            raise(LogCategory::XML_WRITER, ErrorIds::WRITER_UNABLE_TO_OVERWRITE, fileName);
        }
        // A name alone is one in the current directory.
        const fs::path parent = fs::path(fileName).parent_path();
        if (!fs::is_directory(parent.empty() && !fileName.empty() ? "." : parent)) {
            raise(LogCategory::XML_WRITER, ErrorIds::WRITER_INVALID_PATH, fileName);
        }
    } catch (const fs::filesystem_error& error) {
        raise(LogCategory::XML_IO_READER, ErrorIds::FILE_SYSTEM_ERROR, fileName, error.what());
    }
    raise(LogCategory::XML_WRITER, ErrorIds::WRITER_UNABLE_TO_WRITE, fileName);
}

} // namespace

void writeOutputFile(const std::string& fileName, const std::function<void(std::ostream&)>& write)
{
    std::ofstream file(fileName);
    if (!file) raiseNotOpened(fileName);
    // A disk that fills up must not go unnoticed. The stream throws right where the system call failed, so its reason
    // still stands in errno.
    file.exceptions(std::ios::badbit | std::ios::failbit);
    try {
        write(file);
        file.flush();
        file.close();
    } catch (const std::ios_base::failure&) {
        raise(LogCategory::XML_IO_READER, ErrorIds::FILE_SYSTEM_ERROR, fileName,
              std::generic_category().message(errno));
    }
}

} // namespace Color
