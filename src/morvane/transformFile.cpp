#include "morvane/transformFile.h"

#include "morvane/parameterCheck.h"
#include "morvane/transformImpl.h"
#include "morvane/writerSink.h"
#include "utils/statusImpl.h"
#include "xml/fileIOManager.h"
#include "xml/xmlTransformReader.h"
#include "xml/xmlTransformWriter.h"

#include <ostream>

namespace Morvane_2015_1_42 {

namespace {

/// What is saved of a transform. The model keeps references as references, so its stored content is also what an object
/// prepares for a save. Throws 0x3030001 when there is none.
Color::ColorTransformPtr requireModel(const TransformPtr& transform)
{
    Color::ColorTransformPtr model = Impl::Transform::modelOf(transform);
    if (!model) Color::raise(Color::LogCategory::XML_WRITER, Color::ErrorIds::WRITER_TRANSFORM_NULL);
    return model;
}

} // namespace

SupportedExtensionsCallBack::SupportedExtensionsCallBack() = default;
SupportedExtensionsCallBack::SupportedExtensionsCallBack(const SupportedExtensionsCallBack&) = default;
SupportedExtensionsCallBack& SupportedExtensionsCallBack::operator=(const SupportedExtensionsCallBack&) = default;
SupportedExtensionsCallBack::~SupportedExtensionsCallBack() = default;

TransformWriterCallback::TransformWriterCallback() = default;
TransformWriterCallback::TransformWriterCallback(const TransformWriterCallback&) = default;
TransformWriterCallback& TransformWriterCallback::operator=(const TransformWriterCallback&) = default;
TransformWriterCallback::~TransformWriterCallback() = default;

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

MorvaneStatus saveColorTransform(const char* path, bool /* overwrite: nothing is refused */,
                                 const TransformPtr& transform)
{
    return Color::statusOf([&] {
        Impl::requireParameter(path, "path");
        Color::XMLTransformWriter().write(requireModel(transform), path);
    });
}

MorvaneStatus saveColorTransformToBuffer(TransformWriterCallback& callback, const TransformPtr& transform)
{
    return Color::statusOf([&] {
        const Color::ColorTransformPtr model = requireModel(transform);
        Impl::writeThrough(callback, [&](std::ostream& stream) { Color::XMLTransformWriter().write(model, stream); });
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
