#include "xml/fileLoader.h"

#include "utils/exception.h"
#include "xml/cdlReader.h"
#include "xml/halvorn1DReader.h"
#include "xml/halvorn3DReader.h"
#include "xml/iccProfileReader.h"
#include "xml/xmlTransformReader.h"

#include <boost/filesystem/operations.hpp>

namespace Color {

namespace {

void checkIsFile(const std::string& path)
{
    namespace fs = boost::filesystem;
    try {
        const fs::file_status status = fs::status(path);
        if (fs::is_directory(status)) raise(LogCategory::XML_IO_READER, ErrorIds::FILE_NOT_A_FILE, path);
        if (!fs::exists(status)) raise(LogCategory::XML_IO_READER, ErrorIds::FILE_NOT_FOUND, path);
    } catch (const fs::filesystem_error& error) {
        raise(LogCategory::XML_IO_READER, ErrorIds::FILE_SYSTEM_ERROR, path, error.what());
    }
}

ColorTransformPtr read(IOReader& reader, const std::string& path)
{
    reader.readFile(path);
    return reader.getTransform();
}

} // namespace

Readers makeReaders()
{
    Readers readers;
    readers.push_back(std::make_unique<XMLTransformReader>());
    readers.push_back(std::make_unique<CDLReader>());
    readers.push_back(std::make_unique<Halvorn1DReader>());
    readers.push_back(std::make_unique<Halvorn3DReader>());
    readers.push_back(std::make_unique<ICCProfileReader>());
    return readers;
}

ColorTransformPtr loadWith(const Readers& readers, const std::string& path)
{
    checkIsFile(path);

    std::vector<IOReader*> candidates;
    for (const auto& reader : readers) {
        if (reader->isFileSupported(path)) candidates.push_back(reader.get());
    }
    if (candidates.empty()) raise(LogCategory::XML_IO_READER, ErrorIds::FILE_FORMAT_UNSUPPORTED, path);
    if (candidates.size() == 1) return read(*candidates.front(), path);

    std::string errors;
    for (IOReader* reader : candidates) {
        try {
            return read(*reader, path);
        } catch (const Exception& exception) {
            if (!errors.empty()) errors += "\n\n";
            errors += std::string(reader->getName()) + " error:\n\t" + exception.getMessage();
        }
    }
    raise(LogCategory::XML_IO_READER, ErrorIds::FILE_UNREADABLE, path, errors);
}

} // namespace Color
