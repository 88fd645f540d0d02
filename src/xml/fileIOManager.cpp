#include "xml/fileIOManager.h"

#include "utils/paths.h"
#include "xml/fileLoader.h"
#include "xml/pathRepair.h"
#include "xml/xmlTransformReader.h"

#include <algorithm>

namespace Color::FileIOManager {

const std::vector<SupportedExtension>& getSupportedExtensions()
{
    static const std::vector<SupportedExtension> extensions = {
        {XMLTransformReader::getExtension(), XMLTransformReader::getExtension()},
    };
    return extensions;
}

bool isFileSupported(const std::string& path)
{
    const Readers readers = makeReaders();
    return std::any_of(readers.begin(), readers.end(),
                       [&](const auto& reader) { return reader->isFileSupported(path); });
}

std::string repairPath(const std::string& path) { return repairInstalledPath(path, getSystemHome()); }

ColorTransformPtr load(const std::string& path) { return loadWith(makeReaders(), repairPath(path)); }

} // namespace Color::FileIOManager
