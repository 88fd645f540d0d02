#pragma once

#include "morvane/transform.h"
#include "tests/pixels/scalarTwin.h"

#include <ostream>

namespace PixelTest {

/// A list of ops as the twin knows it, and how a host makes the transform.
struct OpCase
{
    std::string name;
    std::vector<Twin::Op> ops;
    /// One ctf document of all ops; else one transform for each op, concatenated.
    bool isOneDocument = false;
};

inline std::ostream& operator<<(std::ostream& stream, const OpCase& opCase) { return stream << opCase.name; }

/// Every kernel alone, bypassed, and in chains of two and three ops in every place.
const std::vector<OpCase>& allOpCases();

const OpCase& opCaseNamed(const std::string& name);

/// A transform of these ops made through the public interface.
Morvane_2015_1_42::TransformPtr makeTransform(const OpCase& opCase);

/// The transform finalized for the CPU with the optimizer off; the given one stays as it is.
Morvane_2015_1_42::TransformPtr finalizedCopy(const Morvane_2015_1_42::TransformPtr& transform,
                                              Morvane_2015_1_42::PixelFormat in, Morvane_2015_1_42::PixelFormat out);

} // namespace PixelTest
