#pragma once

#include "transform/transform.h"

namespace Rendering {

/// Sets the in depth of all ops but the first and the out depth of all ops but the last; the ops rescale their
/// parameters. Throws 0x4010002 on a null transform, 0x4010003 on one without ops.
void setAllBitDepths(BitDepth depth, Color::Transform* transform);

} // namespace Rendering
