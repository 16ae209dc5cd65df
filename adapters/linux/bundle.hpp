#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/files/strings_table.hpp"
#include "adapters/linux/languages.hpp"
#include "platform/bundle.hpp"

namespace tandemtrim::platform::linux {

/// A bundle in a folder: Contents/Info.plist, the resources in Contents/Resources, the modules in
/// Contents/Linux. Its localization and string tables are chosen when it is opened; it never changes
/// afterwards. It uses only the development region in Info.plist (BundleInfo).
class Bundle : public platform::Bundle {
 public:
  /// Opens the bundle in the folder at `path`, in the user's languages. Null if there is no bundle; `reason`
  /// then says which file is missing.
  static std::shared_ptr<Bundle> open(const std::string& path, std::string& reason,
                                      const std::vector<std::string>& languages = userLanguages());

  /// The bundle's folder, absolute.
  [[nodiscard]] std::string path() const { return path_.string(); }

  /// The chosen localization ("pt-BR"), or nullopt if the bundle has no localization.
  [[nodiscard]] const std::optional<std::string>& localization() const noexcept { return localization_; }
  /// One text for each string table, folder of tables or Info.plist that cannot be read completely: its path,
  /// line and fault.
  [[nodiscard]] const std::vector<std::string>& brokenTables() const noexcept { return brokenTables_; }
  /// The same for the property lists among the resources, which are read at each call.
  [[nodiscard]] std::vector<std::string> brokenPropertyLists() const;

  /// Searches the resources, then the chosen localization. Nullopt if the name or type is a path of several
  /// parts.
  [[nodiscard]] std::optional<std::string> pathForResource(std::string_view name,
                                                           std::string_view type) const override;
  /// Each table comes from the first place that has it: the chosen localization, the development region's, or
  /// the resources outside any localization. No other place is searched for a key that this table lacks, even
  /// if the table is one of the broken ones, which have no texts. The default table is "Localizable".
  [[nodiscard]] std::string localizedStringForKey(std::string_view key, std::string_view value,
                                                  std::optional<std::string_view> table) const override;

 private:
  Bundle(std::filesystem::path path, const std::vector<std::string>& languages);
  [[nodiscard]] std::filesystem::path folderOf(const std::string& localization) const;
  void loadTables(const std::filesystem::path& folder);

  std::filesystem::path path_;
  std::filesystem::path resources_;
  std::optional<std::string> localization_;
  std::map<std::string, StringsTable, std::less<>> tables_;
  std::vector<std::string> brokenTables_;
};

}  // namespace tandemtrim::platform::linux
