#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "tests/sequences/world.hpp"

namespace tandemtrim::sequences {

/// What a host, a user or another program can do.
enum class Call {
  makePanel,  // number: printer, which: configuration
  dropPanel,
  refuse,  // requests that return no panel
  panelView,
  willShow,
  restore,
  save,
  summary,
  describe,  // name, kind, keywords and the fixed answers
  type,      // which: side
  append,
  backspace,
  clickCheck,
  clickDefault,
  step,    // which: side, number: clicks
  choose,  // which: menu, number: item
  mix,
  store,  // which: setting, number: job
  remove,
  lock,
  changeJob,  // number: job, or kJobs for no job
};

/// One call with everything that it needs, so that it may be repeated without those around it.
struct Operation {
  Call call;
  std::size_t panel = 0;
  std::size_t which = 0;
  int number = 0;
  std::string text;
};

using Sequence = std::vector<Operation>;
using Random = std::mt19937_64;

/// A random sequence: calls that make a panel and usually show it, then any calls in any order.
Sequence anySequence(Random& random);

/// The call in words.
std::string describe(const Operation& operation);

}  // namespace tandemtrim::sequences
