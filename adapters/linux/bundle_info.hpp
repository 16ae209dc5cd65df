#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// The contents of a bundle's Contents/Info.plist. A value of another type counts as missing.
class BundleInfo {
 public:
  /// Nullopt when the file cannot be read; `reason` then names it and what is wrong with it.
  static std::optional<BundleInfo> read(const std::filesystem::path& bundle, std::string& reason);

  [[nodiscard]] const Dictionary& dictionary() const noexcept { return *dictionary_; }
  /// The name under which the bundle's modules export their principal class.
  [[nodiscard]] std::optional<std::string> principalClass() const { return text("NSPrincipalClass"); }
  /// The language of the bundle's developers; English by default.
  [[nodiscard]] std::string developmentRegion() const;
  /// The modules' name without suffix; by default, or if it is not a file name, the bundle's own name.
  [[nodiscard]] std::string executableName() const;
  /// The option keywords that the bundle's panels set ("PrintOptionKeywords"); may be empty.
  [[nodiscard]] std::vector<std::string> optionKeywords() const;
  /// The path of the module whose name ends in `suffix`, whether it exists or not.
  [[nodiscard]] std::string modulePath(std::string_view suffix) const;

 private:
  BundleInfo(std::filesystem::path bundle, std::shared_ptr<const Dictionary> dictionary);
  [[nodiscard]] std::optional<std::string> text(std::string_view key) const;

  std::filesystem::path bundle_;
  std::shared_ptr<const Dictionary> dictionary_;
};

}  // namespace tandemtrim::platform::linux
