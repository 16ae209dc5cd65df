#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/conformance/platform.hpp"

namespace tandemtrim::conformance {

inline constexpr const char* kType = "BDB091F4-E57F-11D3-B5CC-0050E4603277";

/// One side of the sheet in an ordinary scene.
struct Side {
  std::string name;
  std::string key;
  std::string title;
  std::string textBox;
  std::string stepper;
  std::string label;
  std::string limitLabel;
  int limit;
  std::string defaultText;

  friend std::ostream& operator<<(std::ostream& out, const Side& side) { return out << side.name; }
};

inline const std::vector<Side> kSides = [] {
  std::vector<Side> sides;
  for (const auto& [name, title, limit, defaultValue] : kSceneSides)
    sides.push_back({name, "MV" + name + "Margin", title, "textBoxMargin" + name, "stepperMargin" + name,
                     "labelMargin" + name, "labelMarginLimit" + name, limit, std::to_string(defaultValue)});
  return sides;
}();

inline const std::vector<std::string> kKeys = [] {
  std::vector<std::string> keys{"MVTandemTrim", "MVImageDirectionPriority", "MVPrintPosition"};
  for (const auto& side : kSides) keys.push_back(side.key);
  return keys;
}();

/// A dialog on a scene that the test may change before it opens the dialog.
class Conformance : public testing::Test {
 protected:
  Scene scene;
  std::unique_ptr<Dialog> dialog;
  std::unique_ptr<Panel> panel;

  // The panel is destroyed before the dialog, whose job it writes to.
  ~Conformance() override { panel.reset(); }

  /// Opens a dialog with the panel; its view is not requested yet.
  void open() {
    dialog = openDialog(scene);
    panel = dialog->panelForType(kType, true);
    ASSERT_NE(panel, nullptr);
  }
  /// Opens a dialog and shows the panel, as a host does.
  void show() {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(panel->panelView());
    panel->willShow();
  }
  /// The same, with the function switched on.
  void showOn() {
    scene.stored["MVTandemTrim"] = "On";
    show();
  }
  [[nodiscard]] std::string text(const std::string& outlet) { return panel->look(outlet).text; }
  [[nodiscard]] bool enabled(const std::string& outlet) { return panel->look(outlet).enabled; }
  [[nodiscard]] std::vector<std::optional<std::string>> storedSettings() {
    std::vector<std::optional<std::string>> values;
    for (const auto& key : kKeys) values.push_back(dialog->stored(key));
    return values;
  }
};

class ForEachSide : public Conformance, public testing::WithParamInterface<Side> {
 protected:
  const Side& side = GetParam();
};

inline std::string sideName(const testing::TestParamInfo<Side>& info) { return info.param.name; }

}  // namespace tandemtrim::conformance
