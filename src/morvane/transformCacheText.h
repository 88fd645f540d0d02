#pragma once

#include "morvane/transformStore.h"

#include <ostream>
#include <string_view>

namespace Morvane_2015_1_42::Impl {

/// Adds the entries of a text to the store. Throws 0x6040002 when it is not what writeCacheText() writes, 0x6040003 at
/// an entry whose id the store has, and what reading a transform throws. The entries before stay.
void readCacheText(std::string_view text, TransformStore& store);

/// Writes all entries without their forms.
void writeCacheText(const TransformStore& store, std::ostream& stream);

} // namespace Morvane_2015_1_42::Impl
