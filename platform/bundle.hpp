#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::platform {

/// A plug-in's bundle: its resources and the string tables of the user's language.
class Bundle {
 public:
  virtual ~Bundle() = default;

  /// The full path of the resource with this name and type (its file name extension), or nullopt.
  [[nodiscard]] virtual std::optional<std::string> pathForResource(std::string_view name,
                                                                   std::string_view type) const = 0;

  /// The text under `key` in the string table `table` (nullopt: the default one). When the table lacks the
  /// key: `value`, or the key itself if `value` is empty.
  [[nodiscard]] virtual std::string localizedStringForKey(std::string_view key, std::string_view value,
                                                          std::optional<std::string_view> table) const = 0;
};

}  // namespace tandemtrim::platform
