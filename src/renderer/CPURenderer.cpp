#include "renderer/CPURenderer.h"

#include "renderer/CPUMatrixOp.h"
#include "renderer/pixelFormatAccess.h"
#include "renderer/rendererFactory.h"
#include "renderer/transformDepths.h"
#include "utils/exception.h"
#include "utils/logging.h"

#include <boost/make_shared.hpp>
#include <cstdlib>

namespace Rendering {

namespace {

using Color::LogCategory::RENDERER_ALL;

/// Between two ops a value is always at the scale of 32f; the two ends are at the scale of the images.
void fitDepths(Color::Transform& transform, PixelFormat in, PixelFormat out)
{
    if (transform.getOpList().empty()) return;
    setAllBitDepths(BIT_DEPTH_32f, &transform);
    if (transform.getInBitDepth() != getDepthOf(in)) transform.setInBitDepth(getDepthOf(in));
    if (transform.getOutBitDepth() != getDepthOf(out)) transform.setOutBitDepth(getDepthOf(out));
}

/// What a processor does that would otherwise be empty. Without any op it has equal depths, so that values pass as
/// numbers whatever the depths of the images are.
std::unique_ptr<VirtualRenderer> makeFallback(const Color::OpList& ops)
{
    Color::MatrixOp identity(BIT_DEPTH_8i, BIT_DEPTH_8i);
    if (!ops.empty()) {
        identity.setInBitDepth(ops.get(0)->getInBitDepth());
        identity.setOutBitDepth(ops.get(ops.size() - 1)->getOutBitDepth());
    }
    return makeMatrixRenderer(identity);
}

bool isDumpWanted()
{
    const char* value = std::getenv("MORVANE_DUMP_CPU");
    return value && *value;
}

} // namespace

int CPURenderer::getType() const { return RENDERER_CODE_CPU; }

void CPURenderer::finalize(const Color::Transform* transform, PixelFormat in, PixelFormat out)
{
    m_processor.reset();
    m_codeTable.reset();
    if (!transform) Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_TRANSFORM_NULL);
    if (transform->hasUnresolvedReference()) Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_UNRESOLVED_TRANSFORM);
    finalizeInPlace(*transform->clone(Color::CloneMode::Copy), in, out);
}

void CPURenderer::finalizeInPlace(Color::Transform& transform, PixelFormat in, PixelFormat out)
{
    m_processor.reset();
    m_codeTable.reset();
    fitDepths(transform, in, out);
    const Color::OpList& ops = transform.getOpList();

    auto processor = boost::make_shared<TransformProcessor>();
    if (isDumpWanted()) Color::log(LOG_LEVEL_USER, "Transform %s", transform.getName());
    for (std::size_t i = 0; i < ops.size(); ++i) {
        const Color::Op& op = *ops.get(i);
        if (isDumpWanted()) {
            Color::log(LOG_LEVEL_USER, "Op %s: [%s, %s]", op.getOpTypeName(), getBitDepthName(op.getInBitDepth()),
                       getBitDepthName(op.getOutBitDepth()));
        }
        if (op.getBypass()->get() && !op.getBypass()->isDynamic())
            Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_UNFINALIZED_TRANSFORM);
        if (auto renderer = makeRenderer(op)) processor->push_back(std::move(renderer));
    }
    if (isDumpWanted()) Color::log(LOG_LEVEL_USER, "*********");
    if (processor->empty()) processor->push_back(makeFallback(ops));

    m_codeTable = makeCodeTable(*processor, in, out);
    m_processor = processor;
    m_inputFormat = in;
    m_outputFormat = out;
}

void CPURenderer::apply(const void* source, void* destination, const ROI& roi, uint32_t sourcePadding,
                        uint32_t destinationPadding) const
{
    const uint32_t sourcePixelSize = getPixelFormatAccess(m_inputFormat).pixelSize;
    const uint32_t destinationPixelSize = getPixelFormatAccess(m_outputFormat).pixelSize;
    // All of this is unsigned 32-bit arithmetic that wraps, which callers with unusual strides rely on.
    const uint32_t sourceStep = sourcePixelSize * roi.getImageWidth() + sourcePadding;
    const uint32_t destinationStep = destinationPixelSize * roi.getImageWidth() + destinationPadding;
    const uint32_t sourceOffset = roi.getY() * sourceStep + roi.getX() * sourcePixelSize;
    const uint32_t destinationOffset = roi.getY() * destinationStep + roi.getX() * destinationPixelSize;

    const SourceRows sourceRows = {static_cast<const unsigned char*>(source) + sourceOffset, sourceStep, m_inputFormat};
    const DestinationRows destinationRows = {static_cast<unsigned char*>(destination) + destinationOffset,
                                             destinationStep, m_outputFormat};
    if (m_codeTable) {
        renderImage(*m_codeTable, sourceRows, destinationRows, roi);
    } else {
        renderImage(*m_processor, sourceRows, destinationRows, roi);
    }
}

RendererType CPURenderer::getRendererType(std::size_t index) const
{
    if (index >= getRendererCount()) Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_INVALID_INDEX);
    return (*m_processor)[index]->getType();
}

std::size_t CPURenderer::getRendererCount() const { return m_processor ? m_processor->size() : 0; }

} // namespace Rendering
