#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tandemtrim::conformance {

/// A bundle, a printer and a job, with ordinary content that a test may change before the bundle and the
/// printer's PPD are written to disk. The destructor removes what was written.
class Scene {
 public:
  Scene();
  ~Scene();
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  /// The setting-info property list: key path ("DefaultValue.MarginTop") to an XML value
  /// ("<integer>5</integer>"). Empty for a bundle without the resource.
  std::map<std::string, std::string> settingInfo;
  /// The default string table.
  std::map<std::string, std::string> strings;
  /// Attributes of the printer's PPD; nullopt for a printer without one.
  std::optional<std::map<std::string, std::string>> ppdAttributes;
  /// The job's print settings before the panel is made.
  std::map<std::string, std::string> stored;

  /// Writes the bundle and returns its folder.
  [[nodiscard]] std::string writeBundle() const;
  /// Writes the PPD and returns its path, or nullopt without one.
  [[nodiscard]] std::optional<std::string> writePpd() const;

 private:
  std::filesystem::path folder_;
};

/// One side of the sheet in an ordinary scene.
struct SceneSide {
  std::string name;
  std::string title;
  int limit;
  int defaultValue;
};
inline const std::vector<SceneSide> kSceneSides{{"Top", "Above", 50, 5},
                                                {"Bottom", "Below", 40, 6},
                                                {"Left", "Before", 20, 7},
                                                {"Right", "Behind", 10, 8}};

/// The kind of panel in an ordinary scene.
inline constexpr const char* kPanelKind = "conformance.panel";

}  // namespace tandemtrim::conformance
