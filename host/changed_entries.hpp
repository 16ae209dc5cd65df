#pragma once

#include <algorithm>
#include <vector>

namespace tandemtrim::host {

/// The entries of `now` that differ from those of `before`: what a user changed. Controls may show a stored
/// value only roughly, so a caller stores these entries only and keeps all other values.
template <class Entries>
Entries changedEntries(const Entries& before, Entries now) {
  std::erase_if(now, [&](const auto& entry) { return std::ranges::find(before, entry) != before.end(); });
  return now;
}

}  // namespace tandemtrim::host
