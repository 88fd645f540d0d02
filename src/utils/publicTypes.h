#pragma once

#include "morvane/basePath.h"
#include "morvane/bitDepth.h"
#include "morvane/dynamicProperty.h"
#include "morvane/halfFlags.h"
#include "morvane/pixelFormat.h"
#include "morvane/preferenceOrigin.h"
#include "morvane/roi.h"
#include "morvane/status.h"

// The internal namespaces use the public value types without their version.
namespace Color {
using namespace Morvane_2015_1_42;
}
namespace Rendering {
using namespace Morvane_2015_1_42;
}
