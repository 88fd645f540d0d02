#include "morvane/transformImpl.h"

#include "morvane/morvanePrefs.h"
#include "morvane/transformDescription.h"
#include "renderer/optimizer.h"
#include "utils/statusImpl.h"
#include "utils/text.h"
#include "xml/xmlTransformResolver.h"

#include <boost/make_shared.hpp>
#include <typeinfo>

namespace Morvane_2015_1_42::Impl {

namespace LogCategory = Color::LogCategory;
namespace ErrorIds = Color::ErrorIds;

namespace {

/// Throws 0x1010001 unless the region fits its image: nothing outside the image is ever read or written.
void validateROI(const ROI& roi)
{
    // The image size is passed as a text where the message has a number, and so prints as 0: hosts compare the message.
    if (roi.getActiveWidth() > roi.getImageWidth()) {
        Color::raise(LogCategory::UTILS_ALL, ErrorIds::ROI_MISMATCH, "active width", "image width");
    }
    if (roi.getActiveHeight() > roi.getImageHeight()) {
        Color::raise(LogCategory::UTILS_ALL, ErrorIds::ROI_MISMATCH, "active height", "image height");
    }
    if (uint64_t(roi.getX()) + roi.getActiveWidth() > roi.getImageWidth()) {
        Color::raise(LogCategory::UTILS_ALL, ErrorIds::ROI_MISMATCH, "x plus active width", roi.getImageWidth());
    }
    if (uint64_t(roi.getY()) + roi.getActiveHeight() > roi.getImageHeight()) {
        Color::raise(LogCategory::UTILS_ALL, ErrorIds::ROI_MISMATCH, "y plus active height", roi.getImageHeight());
    }
}

/// What getDescription() gives out: one text per thread.
std::string& descriptionBuffer()
{
    thread_local std::string buffer;
    return buffer;
}

/// Bytes of a row of the image without padding.
uint32_t rowSize(PixelFormat format, const ROI& roi) { return getPixelSizeInByte(format) * roi.getImageWidth(); }

} // namespace

Transform::Transform(const Color::ColorTransformPtr& transform, const std::string& filePath, ResolveFlags resolveFlags)
    : m_transform(transform), m_filePath(filePath), m_resolveFlags(resolveFlags), m_aliasWatch(*this)
{
    m_aliasWatch.watch(m_transform->getOpList());
}

Transform::~Transform() = default;

Transform* Transform::of(const TransformPtr& handle)
{
    if (!handle) return nullptr;
    // The class is final, so comparing types finds all that a dynamic_cast would, and costs less: finalize() may be
    // called once per frame.
    Morvane_2015_1_42::Transform& transform = *handle;
    return typeid(transform) == typeid(Transform) ? static_cast<Transform*>(&transform) : nullptr;
}

Color::ColorTransformPtr Transform::modelOf(const TransformPtr& handle)
{
    const Transform* transform = of(handle);
    return transform ? transform->m_transform : Color::ColorTransformPtr();
}

TransformPtr Transform::clone() const
{
    // The clone shares what the references are resolved to, and with that the flags.
    return TransformPtr(new Transform(m_transform->clone(Color::CloneMode::Copy), m_filePath, m_resolveFlags));
}

const char* Transform::getId() const { return m_transform->getId().c_str(); }

MorvaneStatus Transform::setId(const char* id)
{
    return Color::statusOf([&] { m_transform->setId(Color::orEmpty(id)); });
}

const char* Transform::getUniqueId() const { return m_transform->getUniqueId().c_str(); }

MorvaneStatus Transform::setUniqueId(const char* uniqueId)
{
    return Color::statusOf([&] { m_transform->setUniqueId(Color::orEmpty(uniqueId)); });
}

const char* Transform::getName() const { return m_transform->getName().c_str(); }

void Transform::setName(const char* name) { m_transform->setName(Color::orEmpty(name)); }

const char* Transform::getDescription() const
{
    std::string& joined = descriptionBuffer();
    joined.clear();
    for (const std::string& description : m_transform->getDescriptions()) {
        if (&description != &m_transform->getDescriptions().front()) joined += '\n';
        joined += description;
    }
    return joined.c_str();
}

void Transform::setDescription(const char* description)
{
    m_transform->getDescriptions().assign(1, Color::orEmpty(description));
}

const char* Transform::getInputDescriptor() const { return m_transform->getInputDescriptor().c_str(); }

void Transform::setInputDescriptor(const char* descriptor)
{
    m_transform->setInputDescriptor(Color::orEmpty(descriptor));
}

const char* Transform::getOutputDescriptor() const { return m_transform->getOutputDescriptor().c_str(); }

void Transform::setOutputDescriptor(const char* descriptor)
{
    m_transform->setOutputDescriptor(Color::orEmpty(descriptor));
}

BitDepth Transform::getInputBitDepth() const { return m_transform->getInBitDepth(); }

BitDepth Transform::getOutputBitDepth() const { return m_transform->getOutBitDepth(); }

PixelFormat Transform::getInputPixelFormat() const { return m_inputPixelFormat; }

MorvaneStatus Transform::setInputPixelFormat(PixelFormat format)
{
    return setPixelFormats(format, m_outputPixelFormat);
}

PixelFormat Transform::getOutputPixelFormat() const { return m_outputPixelFormat; }

MorvaneStatus Transform::setOutputPixelFormat(PixelFormat format)
{
    return setPixelFormats(m_inputPixelFormat, format);
}

MorvaneStatus Transform::setPixelFormats(PixelFormat in, PixelFormat out)
{
    if (in == m_inputPixelFormat && out == m_outputPixelFormat) return MorvaneStatus();
    return finalize(in, out, m_rendererFlags, m_optimizerFlags, m_resolveFlags);
}

MorvaneStatus Transform::inverse(TransformPtr& result) const
{
    return Color::statusOf([&] {
        const Color::ColorTransformPtr target = boost::make_shared<Color::Transform>();
        m_transform->inverse(*target);
        result.reset(new Transform(target));
    });
}

bool Transform::isInverseOf(const TransformPtr& other) const
{
    const Color::ColorTransformPtr model = modelOf(other);
    return model && m_transform->isInverseOf(*model);
}

bool Transform::hasReferences() const { return m_transform->hasReference(); }

bool Transform::hasUnresolvedReferences() const { return m_transform->hasUnresolvedReference(); }

MorvaneStatus Transform::describe(ContentCallbacks& callbacks) const
{
    return Color::statusOf([&] {
        const Color::ColorTransformPtr held = m_transform; // the callback may let go of the last handle
        Impl::describe(*held, callbacks);
    });
}

MorvaneStatus Transform::setDynamicProperty(const DynamicProperty& property)
{
    return Color::statusOf([&] { m_transform->setDynamicProperty(property); });
}

MorvaneStatus Transform::getDynamicProperty(DynamicProperty& property) const
{
    return Color::statusOf([&] { m_transform->getDynamicProperty(property); });
}

void Transform::setGPUAdaptor(const GPUAdaptorPtr& adaptor)
{
    m_gpuAdaptor = adaptor;
    dropRenderers();
}

GPUAdaptorPtr Transform::getGPUAdaptor() const { return m_gpuAdaptor; }

MorvaneStatus Transform::apply(const void* source, unsigned sourceStride, const ROI& roi, void* destination,
                               unsigned destinationStride)
{
    return Color::statusOf([&] {
        if (!m_cpuRenderer) Color::raise(LogCategory::MORVANE_COLOR, ErrorIds::MORVANE_NO_RENDERER, "CPU");
        if (!source || !destination) Color::raise(LogCategory::RENDERER_ALL, ErrorIds::RENDERER_IMAGE_NULL);
        validateROI(roi);
        m_cpuRenderer->apply(source, destination, roi, sourceStride - rowSize(m_inputPixelFormat, roi),
                             destinationStride - rowSize(m_outputPixelFormat, roi));
    });
}

MorvaneStatus Transform::apply(const void* source, const ROI& roi, void* destination)
{
    return apply(source, rowSize(m_inputPixelFormat, roi), roi, destination, rowSize(m_outputPixelFormat, roi));
}

// No kind of GPU renderer is part of this build, so there is never one to hand the three values to.
MorvaneStatus Transform::applyGPU(unsigned, const void*, const void*)
{
    return Color::statusOf([] { Color::raise(LogCategory::MORVANE_COLOR, ErrorIds::MORVANE_NO_RENDERER, "GPU"); });
}

void Transform::notify()
{
    m_transform->unresolve();
    finalize(m_inputPixelFormat, m_outputPixelFormat, m_rendererFlags, m_optimizerFlags, m_resolveFlags);
}

bool Transform::isFinalizedWith(PixelFormat in, PixelFormat out, RendererFlags rendererFlags,
                                OptimizerFlags optimizerFlags, ResolveFlags resolveFlags) const
{
    return isFinalized() && in == m_inputPixelFormat && out == m_outputPixelFormat &&
           rendererFlags == m_rendererFlags && optimizerFlags == m_optimizerFlags && resolveFlags == m_resolveFlags;
}

void Transform::resolveReferences(ResolveFlags resolveFlags)
{
    const bool flagsChange = resolveFlags != m_resolveFlags;
    const bool isUnresolved = m_transform->hasUnresolvedReference();
    // Flags are changed for what they have chosen. There is nothing chosen yet in an unresolved reference.
    if (flagsChange && isUnresolved) Color::raise(LogCategory::MORVANE_PREFS, ErrorIds::UNRESOLVED_REFERENCES);
    if (m_transform->hasReference() && (flagsChange || isUnresolved)) {
        m_transform->unresolve();
        const Color::XMLTransformResolver resolver(MorvanePrefs::getInstance().get());
        resolver.resolve(m_filePath, resolveFlags, *m_transform);
    }
    m_resolveFlags = resolveFlags;
    // Other flags choose other aliases, and other aliases may show in referenced files.
    m_aliasWatch.watch(m_transform->getOpList());
}

Color::ColorTransformPtr Transform::makeFlatCopy(ResolveFlags resolveFlags)
{
    resolveReferences(resolveFlags);
    return m_transform->clone(Color::CloneMode::Flatten);
}

MorvaneStatus Transform::finalize(PixelFormat in, PixelFormat out, RendererFlags rendererFlags,
                                  OptimizerFlags optimizerFlags, ResolveFlags resolveFlags)
{
    m_inputPixelFormat = in;
    m_outputPixelFormat = out;
    m_rendererFlags = rendererFlags;
    m_optimizerFlags = optimizerFlags;
    dropRenderers();
    return Color::statusOf([&] {
        const Color::ColorTransformPtr flat = makeFlatCopy(resolveFlags);
        Rendering::optimize(*flat, optimizerFlags);
        createRenderers(*flat);
    });
}

void Transform::dropRenderers()
{
    m_cpuRenderer.reset();
    m_gpuRenderer.reset();
}

void Transform::createRenderers(const Color::Transform& flat)
{
    Rendering::GenericCPURendererPtr cpuRenderer;
    if (m_rendererFlags & RENDERER_CPU) {
        cpuRenderer = Rendering::createCPURenderer(Rendering::RENDERER_CODE_CPU);
        // The environment can ask for a kind that is not part of this build.
        if (!cpuRenderer) Color::raise(LogCategory::MORVANE_COLOR, ErrorIds::MORVANE_NO_RENDERER, "OCIO");
        cpuRenderer->finalize(&flat, m_inputPixelFormat, m_outputPixelFormat);
    }
    Rendering::GenericRendererPtr gpuRenderer;
    if (m_rendererFlags & RENDERER_GPU) {
        gpuRenderer = Rendering::createGPURenderer(Rendering::RENDERER_CODE_GPU);
        if (!m_gpuAdaptor || !gpuRenderer) {
            Color::raise(LogCategory::MORVANE_COLOR, ErrorIds::MORVANE_NO_RENDERER, "GPU");
        }
    }
    // Stored together and last, so that a failure above leaves neither.
    m_cpuRenderer = cpuRenderer;
    m_gpuRenderer = gpuRenderer;
}

} // namespace Morvane_2015_1_42::Impl
