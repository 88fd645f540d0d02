#include "morvane/transformFile.h"

#include "morvane/parameterCheck.h"
#include "morvane/transformImpl.h"
#include "utils/statusImpl.h"
#include "xml/fileIOManager.h"
#include "xml/xmlTransformReader.h"

namespace Morvane_2015_1_42 {

SupportedExtensionsCallBack::SupportedExtensionsCallBack() = default;
SupportedExtensionsCallBack::SupportedExtensionsCallBack(const SupportedExtensionsCallBack&) = default;
SupportedExtensionsCallBack& SupportedExtensionsCallBack::operator=(const SupportedExtensionsCallBack&) = default;
SupportedExtensionsCallBack::~SupportedExtensionsCallBack() = default;

MorvaneStatus loadColorTransform(const char* path, TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(path, "path");
        result.reset(new Impl::Transform(Color::FileIOManager::load(path), path));
    });
}

MorvaneStatus loadColorTransformFromBuffer(const char* text, TransformPtr& result)
{
    return Color::statusOf([&] {
        Impl::requireParameter(text, "text");
        Color::XMLTransformReader reader;
        reader.readBuffer(text);
        result.reset(new Impl::Transform(reader.getTransform()));
    });
}

bool isFileSupported(const char* path)
{
    try {
        return path && Color::FileIOManager::isFileSupported(path);
    } catch (...) {
        return false;
    }
}

MorvaneStatus getSupportedFileExtensions(SupportedExtensionsCallBack& callback)
{
    return Color::statusOf([&] {
        for (const auto& entry : Color::FileIOManager::getSupportedExtensions()) {
            callback.addExtension(entry.extension.c_str(), entry.description.c_str());
        }
    });
}

const char* getColorTransformFileExtension() { return Color::XMLTransformReader::getExtension(); }

} // namespace Morvane_2015_1_42
