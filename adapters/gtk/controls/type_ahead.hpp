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
  /// The item that is meant after one more letter, or none. A letter that is typed again and again goes
  /// through the items that begin with it; `current` is the one to begin behind. After a pause, in
  /// milliseconds of `time`, a new beginning is typed.
  std::optional<std::size_t> type(char32_t letter, std::uint32_t time, const std::vector<std::string>& titles,
                                  std::optional<std::size_t> current);

 private:
  std::u32string typed_;
  std::uint32_t last_ = 0;
};

}  // namespace tandemtrim::platform::gtk
