#include "xml/fileIOManager.h"

#include "utils/paths.h"
#include "xml/cdlFormat.h"
#include "xml/fileLoader.h"
#include "xml/halvorn1DReader.h"
#include "xml/halvorn3DReader.h"
#include "xml/iccProfileReader.h"
#include "xml/pathRepair.h"
#include "xml/xmlTransformReader.h"

#include <algorithm>

namespace Color::FileIOManager {

namespace {

std::vector<SupportedExtension> listExtensions()
{
    std::vector<SupportedExtension> extensions;
    extensions.push_back({XMLTransformReader::getExtension(), XMLTransformReader::getExtension()});
    for (const CDLFormatRow& row : kCDLFormats)
        extensions.push_back({row.extension, row.description});
    extensions.push_back({Halvorn1DReader::getExtension(), "Halvorn 1d-LUT format"});
    extensions.push_back({Halvorn3DReader::getExtension(), "Halvorn 3d-LUT format"});
    for (const char* extension : ICCProfileReader::kExtensions)
        extensions.push_back({extension, "ICC Profile file extension"});
    return extensions;
}

} // namespace

const std::vector<SupportedExtension>& getSupportedExtensions()
{
    static const std::vector<SupportedExtension> extensions = listExtensions();
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
