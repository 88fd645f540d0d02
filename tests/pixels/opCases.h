#pragma once

#include "morvane/transform.h"
#include "tests/pixels/scalarTwin.h"

#include <algorithm>
#include <ostream>

namespace PixelTest {

/// A list of ops as the twin knows it, and how a host makes the transform.
struct OpCase
{
    std::string name;
    std::vector<Twin::Op> ops;
    /// One ctf document of all ops, which must be matrices and ranges; else one transform for each op, concatenated.
    bool isOneDocument = false;
    /// Made for what the ops do with values, or slow to finalize: some of the pairs of formats are enough.
    bool isThinned = false;
};

inline std::ostream& operator<<(std::ostream& stream, const OpCase& opCase) { return stream << opCase.name; }

/// Each n-th of all, beginning with another one at each turn; all of them unless an instrumented build makes each one
/// dear.
template <class T>
std::vector<T> sampled(const std::vector<T>& all, size_t turn)
{
    const size_t step = std::min<size_t>(MORVANE_SAMPLE_STEP, all.size());
    std::vector<T> some;
    for (size_t i = 0; i < all.size(); ++i) {
        if ((i + turn) % step == 0) some.push_back(all[i]);
    }
    return some;
}

/// Every kernel alone, bypassed, and in chains of two and three ops in every place.
const std::vector<OpCase>& allOpCases();

/// The pairs of formats between which the case is to be rendered: all, or for a thinned one an eighth of them, in which
/// every pair of depths stands and every format several times as the source and as the destination.
std::vector<std::pair<Twin::PixelFormat, Twin::PixelFormat>> formatPairsOf(const OpCase& opCase);

const OpCase& opCaseNamed(const std::string& name);

/// A transform of these ops.
Morvane_2015_1_42::TransformPtr makeTransform(const OpCase& opCase);

/// The transform finalized for the CPU with the optimizer off; the given one stays as it is.
Morvane_2015_1_42::TransformPtr finalizedCopy(const Morvane_2015_1_42::TransformPtr& transform,
                                              Morvane_2015_1_42::PixelFormat in, Morvane_2015_1_42::PixelFormat out);

} // namespace PixelTest
