#include "renderer/transformDepths.h"

#include "utils/exception.h"

namespace Rendering {

using Color::LogCategory::RENDERER_ALL;

void setAllBitDepths(BitDepth depth, Color::Transform* transform)
{
    if (!transform) Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_TRANSFORM_NULL);
    Color::OpList& ops = transform->getOpList();
    if (ops.empty()) Color::raise(RENDERER_ALL, Color::ErrorIds::RENDERER_TRANSFORM_EMPTY);
    for (std::size_t i = 0; i < ops.size(); ++i) {
        if (i > 0) ops.get(i)->setInBitDepth(depth);
        if (i + 1 < ops.size()) ops.get(i)->setOutBitDepth(depth);
    }
}

} // namespace Rendering
