#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tandemtrim::platform::gtk {

/// Finds an item of a menu by the beginning of its title, which the user types.
class TypeAhead {
 public:
  /// The index of the item that matches after one more letter, or nullopt. Repeating a letter goes through
  /// the items that begin with it, starting after `current`. A letter more than a second after the last one
  /// begins anew; `time` is in milliseconds.
  std::optional<std::size_t> type(char32_t letter, std::uint32_t time, const std::vector<std::string>& titles,
                                  std::optional<std::size_t> current);

 private:
  std::u32string typed_;
  std::uint32_t last_ = 0;
};

}  // namespace tandemtrim::platform::gtk
