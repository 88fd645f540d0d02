#pragma once

#include "utils/publicTypes.h"

namespace Color {

/// Names for the rows of the error table, in the table's order. Two ids have a second row, which has its own name here
/// and is never found by a look-up.
namespace ErrorIds {
#define MORVANE_ERROR(id, name, text) constexpr ErrorId name = id;
#include "utils/errorTable.inc"
#undef MORVANE_ERROR
} // namespace ErrorIds

} // namespace Color
