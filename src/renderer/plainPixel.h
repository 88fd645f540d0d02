#pragma once

#include "renderer/channelOrder.h"
#include "renderer/pixelElement.h"

#include <cstdint>

namespace Rendering {

/// Lanes in memory order brought to red, green, blue, alpha. Each of these permutations undoes itself, so this also
/// brings them back.
template <ChannelOrder order>
V4f reordered(V4f lanes)
{
    if constexpr (order == ChannelOrder::BGR || order == ChannelOrder::BGRA) {
        return _mm_shuffle_ps(lanes.v, lanes.v, _MM_SHUFFLE(3, 0, 1, 2));
    } else if constexpr (order == ChannelOrder::ABGR) {
        return _mm_shuffle_ps(lanes.v, lanes.v, _MM_SHUFFLE(0, 1, 2, 3));
    } else {
        return lanes;
    }
}

/// Unpacks pixels whose channels are elements of their own. See Unpacker.
template <class Element, ChannelOrder order>
void unpackPlain(const void* source, float* rgba, uint32_t width)
{
    using Storage = typename Element::Storage;
    const auto* pixel = static_cast<const Storage*>(source);
    if constexpr (hasAlpha(order)) {
        constexpr uint32_t batch = Element::kBatch;
        uint32_t i = 0;
        for (; i + batch <= width; i += batch, pixel += batch * 4) {
            V4f pixels[batch];
            Element::readBatch(pixel, pixels);
            for (const V4f& value : pixels) {
                store(rgba, reordered<order>(value));
                rgba += 4;
            }
        }
        for (; i < width; ++i, pixel += 4, rgba += 4) {
            store(rgba, reordered<order>(Element::readFour(pixel)));
        }
    } else {
        const V4f opaque(Element::kMaximum);
        const auto unpackOne = [&](const Storage* elements) {
            store(rgba, select(alphaMask(), opaque, reordered<order>(Element::readFour(elements))));
        };
        // Four elements are read for three: the fourth is the next pixel's, so the last pixel is read from a copy.
        for (uint32_t i = 1; i < width; ++i, pixel += 3, rgba += 4) {
            unpackOne(pixel);
        }
        if (width > 0) {
            Storage last[4] = {};
            std::memcpy(last, pixel, 3 * sizeof(Storage));
            unpackOne(last);
        }
    }
}

/// Packs pixels whose channels are elements of their own. See Packer.
template <class Element, ChannelOrder order>
void packPlain(const float* rgba, void* destination, uint32_t width)
{
    auto* pixel = static_cast<typename Element::Storage*>(destination);
    if constexpr (hasAlpha(order)) {
        constexpr uint32_t batch = Element::kBatch;
        uint32_t i = 0;
        for (; i + batch <= width; i += batch, pixel += batch * 4) {
            V4f pixels[batch];
            for (V4f& value : pixels) {
                value = reordered<order>(load(rgba));
                rgba += 4;
            }
            Element::writeBatch(pixel, pixels);
        }
        for (; i < width; ++i, pixel += 4, rgba += 4) {
            Element::writeFour(pixel, reordered<order>(load(rgba)));
        }
    } else {
        for (uint32_t i = 0; i < width; ++i, pixel += 3, rgba += 4) {
            Element::writeThree(pixel, reordered<order>(load(rgba)));
        }
    }
}

} // namespace Rendering
