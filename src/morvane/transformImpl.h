#pragma once

#include "morvane/aliasWatch.h"
#include "morvane/finalize.h"
#include "morvane/transform.h"
#include "renderer/genericRenderer.h"
#include "transform/transform.h"
#include "utils/observable.h"

#include <boost/core/noncopyable.hpp>
#include <string>

namespace Morvane_2015_1_42::Impl {

/// What stands behind every TransformPtr that the library gives out: a Color::Transform, and what finalize() made of
/// it. It is finalized while it holds a renderer.
class Transform final : public Morvane_2015_1_42::Transform, public Color::Observer, private boost::noncopyable
{
public:
    /// Not finalized. The transform must not be null; filePath is the base of its relative references. With references
    /// to aliases the preferences of the process are loaded, so that changes of the aliases are noticed; their failures
    /// pass through.
    /// \param resolveFlags what its references are resolved with, as far as they are
    explicit Transform(const Color::ColorTransformPtr& transform, const std::string& filePath = std::string(),
                       ResolveFlags resolveFlags = RESOLVE_BROADCAST_MONITOR);
    ~Transform() override;

    /// The object behind a handle; null when there is none, or when it is not one of the library's own.
    static Transform* of(const TransformPtr& handle);
    /// The model behind a handle, null like above.
    static Color::ColorTransformPtr modelOf(const TransformPtr& handle);

    TransformPtr clone() const override;
    const char* getId() const override;
    MorvaneStatus setId(const char* id) override;
    const char* getUniqueId() const override;
    MorvaneStatus setUniqueId(const char* uniqueId) override;
    const char* getName() const override;
    void setName(const char* name) override;
    const char* getDescription() const override;
    void setDescription(const char* description) override;
    const char* getInputDescriptor() const override;
    void setInputDescriptor(const char* descriptor) override;
    const char* getOutputDescriptor() const override;
    void setOutputDescriptor(const char* descriptor) override;
    BitDepth getInputBitDepth() const override;
    BitDepth getOutputBitDepth() const override;
    PixelFormat getInputPixelFormat() const override;
    MorvaneStatus setInputPixelFormat(PixelFormat format) override;
    PixelFormat getOutputPixelFormat() const override;
    MorvaneStatus setOutputPixelFormat(PixelFormat format) override;
    MorvaneStatus setPixelFormats(PixelFormat in, PixelFormat out) override;
    MorvaneStatus inverse(TransformPtr& result) const override;
    bool isInverseOf(const TransformPtr& other) const override;
    bool hasReferences() const override;
    bool hasUnresolvedReferences() const override;
    MorvaneStatus describe(ContentCallbacks& callbacks) const override;
    MorvaneStatus setDynamicProperty(const DynamicProperty& property) override;
    MorvaneStatus getDynamicProperty(DynamicProperty& property) const override;
    void setGPUAdaptor(const GPUAdaptorPtr& adaptor) override;
    GPUAdaptorPtr getGPUAdaptor() const override;
    MorvaneStatus apply(const void* source, unsigned sourceStride, const ROI& roi, void* destination,
                        unsigned destinationStride) override;
    MorvaneStatus apply(const void* source, const ROI& roi, void* destination) override;
    MorvaneStatus applyGPU(unsigned a, const void* b, const void* c) override;

    /// An alias that a reference uses has changed: resolves and finalizes anew with the stored values.
    void notify() override;

    ResolveFlags getResolveFlags() const { return m_resolveFlags; }

    bool isFinalized() const { return m_cpuRenderer || m_gpuRenderer; }
    /// True when these are the values of the last finalize().
    bool isFinalizedWith(PixelFormat in, PixelFormat out, RendererFlags rendererFlags, OptimizerFlags optimizerFlags,
                         ResolveFlags resolveFlags) const;
    /// Resolves the references, unless they are resolved with these flags, and copies the ops that are to be rendered.
    /// Throws 0x6030004 when the flags are other ones than before and a reference was never resolved.
    Color::ColorTransformPtr makeFlatCopy(ResolveFlags resolveFlags);
    /// Finalizes this object, whatever its state. After a failure it has no renderer.
    MorvaneStatus finalize(PixelFormat in, PixelFormat out, RendererFlags rendererFlags, OptimizerFlags optimizerFlags,
                           ResolveFlags resolveFlags);

private:
    void resolveReferences(ResolveFlags resolveFlags);
    void dropRenderers();
    void createRenderers(const Color::Transform& flat);

    Color::ColorTransformPtr m_transform;
    Rendering::GenericCPURendererPtr m_cpuRenderer;
    Rendering::GenericRendererPtr m_gpuRenderer;
    RendererFlags m_rendererFlags = RENDERER_NONE;
    OptimizerFlags m_optimizerFlags = OPTIMIZER_DEFAULT;
    PixelFormat m_inputPixelFormat = PF_UNKNOWN;
    PixelFormat m_outputPixelFormat = PF_UNKNOWN;
    std::string m_filePath;
    ResolveFlags m_resolveFlags;
    GPUAdaptorPtr m_gpuAdaptor;
    AliasWatch m_aliasWatch;
};

} // namespace Morvane_2015_1_42::Impl
