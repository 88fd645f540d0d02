#include "renderer/transformProcessor.h"

#include "renderer/pixelFormatAccess.h"
#include "renderer/pixelRenderer.h"

#include <algorithm>
#include <boost/container/small_vector.hpp>

namespace Rendering {

namespace {

/// Small enough that a tile stays in the first-level cache while all renderers run over it.
constexpr uint32_t kTilePixels = 256;

/// What a bypassed renderer does instead of its kernel: the plain change of depth.
struct DepthChange
{
    V4f factor;

    V4f operator()(V4f in) const { return in * factor; }
};

/// Runs a line through all renderers, tile by tile: unpack, work, pack. An image of four floats per pixel is itself
/// read by the first renderer, or written by the last.
class LineDriver
{
public:
    LineDriver(const TransformProcessor& processor, PixelFormat sourceFormat, PixelFormat destinationFormat)
        : m_source(getPixelFormatAccess(sourceFormat)), m_destination(getPixelFormatAccess(destinationFormat))
    {
        const float rangeIn = getBitDepthValueRange(m_source.depth);
        const float rangeOut = getBitDepthValueRange(m_destination.depth);
        const float rangeTile = getBitDepthValueRange(BIT_DEPTH_32f);
        m_steps.reserve(processor.size());
        for (std::size_t i = 0; i < processor.size(); ++i) {
            const float from = i == 0 ? rangeIn : rangeTile;
            const float to = i + 1 == processor.size() ? rangeOut : rangeTile;
            m_steps.push_back({processor[i].get(), DepthChange{V4f(to / from)}, DynamicValues()});
        }
        m_sourceKernel = processor.front()->getSourceKernel(sourceFormat);
    }

    void render(const unsigned char* source, unsigned char* destination, uint32_t x, uint32_t y, uint32_t width)
    {
        for (Step& step : m_steps) {
            step.dynamicValues = step.renderer->readDynamicValues();
        }
        for (uint32_t done = 0; done < width;) {
            const uint32_t count = std::min(kTilePixels, width - done);
            renderTile(source, destination, {nullptr, nullptr, count, x + done, y, {}});
            source += std::size_t{count} * m_source.pixelSize;
            destination += std::size_t{count} * m_destination.pixelSize;
            done += count;
        }
    }

private:
    struct Step
    {
        const VirtualRenderer* renderer;
        DepthChange depthChange;
        DynamicValues dynamicValues; ///< of this line
    };

    void renderTile(const unsigned char* source, unsigned char* destination, PixelRun run) const
    {
        alignas(16) float tile[kTilePixels * 4];
        const bool readsImage = m_source.format == PF_RGBA_32f;
        const bool writesImage = m_destination.format == PF_RGBA_32f;

        const Step* step = m_steps.data();
        const Step* const last = &m_steps.back();
        const auto chooseDestination = [&] {
            run.destination = writesImage && step == last ? reinterpret_cast<float*>(destination) : tile;
        };
        if (m_sourceKernel && !step->dynamicValues.isBypassed) {
            chooseDestination();
            run.dynamicValues = step->dynamicValues;
            m_sourceKernel(*step->renderer, source, run);
            run.source = run.destination;
            ++step;
        } else if (readsImage) {
            run.source = reinterpret_cast<const float*>(source);
        } else {
            m_source.unpack(source, tile, run.width);
            run.source = tile;
        }
        for (; step <= last; ++step) {
            chooseDestination();
            run.dynamicValues = step->dynamicValues;
            if (step->dynamicValues.isBypassed) {
                renderPixels(run, step->depthChange);
            } else {
                step->renderer->render(run);
            }
            run.source = run.destination;
        }
        if (!writesImage) m_destination.pack(tile, destination, run.width);
    }

    const PixelFormatAccess& m_source;
    const PixelFormatAccess& m_destination;
    SourceKernel m_sourceKernel = nullptr; ///< of the first renderer
    /// Lists of ops are short; only one longer than this takes memory from the heap, once per image.
    boost::container::small_vector<Step, 32> m_steps;
};

} // namespace

void renderImage(const TransformProcessor& processor, const SourceRows& source, const DestinationRows& destination,
                 const ROI& roi)
{
    LineDriver driver(processor, source.format, destination.format);
    for (uint32_t line = 0; line < roi.getActiveHeight(); ++line) {
        driver.render(source.firstPixel + std::size_t{line} * source.rowStep,
                      destination.firstPixel + std::size_t{line} * destination.rowStep, roi.getX(), roi.getY() + line,
                      roi.getActiveWidth());
    }
}

} // namespace Rendering
