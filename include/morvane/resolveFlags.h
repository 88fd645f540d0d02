#pragma once

#include <cstdint>

namespace Morvane_2015_1_42 {

/// Which monitor the alias "currentMonitor" of a reference stands for. With any other value it stands for itself.
enum ResolveFlags : uint32_t
{
    RESOLVE_GRAPHICS_MONITOR = 0,  ///< what the alias "graphicsMonitor" stands for
    RESOLVE_BROADCAST_MONITOR = 1, ///< what the alias "broadcastMonitor" stands for
};

} // namespace Morvane_2015_1_42
