#pragma once

#include "tests/sequences/model.hpp"

namespace tandemtrim::sequences {

/// A sequence of calls, and how the panel and its model differ after the last one.
struct Difference {
  Sequence sequence;
  std::string text;
};

/// Changes a call before the model plays it, to test the comparison itself.
using Alteration = Operation (*)(Operation operation);

/// The calls of a sequence up to the first after which panel and model differ; nullopt if they never do.
/// `alteration`, if any, changes every call before the model plays it.
std::optional<Difference> findDifference(const Sequence& sequence, Alteration alteration = nullptr);

/// Leaves out calls for as long as some difference remains, which need not be the same one.
Difference shorten(Difference difference, Alteration alteration = nullptr);

/// The calls, one a line, and what differs after the last one.
std::string describe(const Difference& difference);

}  // namespace tandemtrim::sequences
