#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/bundle.hpp"
#include "platform/controls.hpp"
#include "platform/object.hpp"
#include "platform/print_settings.hpp"

/// libcups's open PPD file, declared here so that this header needs no header of libcups.
struct ppd_file_s;

namespace tandemtrim::platform {

/// The extension type of the print dialog's panels.
inline constexpr std::string_view kPrintDialogExtensionType = "BDB091F4-E57F-11D3-B5CC-0050E4603277";
/// The key in a summary for the order of its entries.
inline constexpr std::string_view kSummaryDisplayOrderKey = "Summary Display Order";

/// A host's services to the panels that it requests.
class HostCallback {
 public:
  virtual ~HostCallback() = default;
  /// The job's print settings, which outlive every panel that was made with this callback, or null when the
  /// job has no settings.
  [[nodiscard]] virtual PrintSettings* printSettings() = 0;
  /// The open PPD file of the chosen printer, or null when it has no PPD.
  [[nodiscard]] virtual ppd_file_s* ppdFile() = 0;
};

/// A value that a setting can have, and its title in the user's language.
struct SettingChoice {
  std::string value;
  std::string title;
};

/// One setting of a panel, for hosts that check, list or change settings without a view.
struct PanelSetting {
  enum class Kind { onOff, choice, number };
  /// An edge of the sheet.
  enum class Edge { none, top, bottom, left, right };

  /// The PPD option keyword under which the setting is stored.
  std::string keyword;
  /// The setting's name, the same in every language; its control has the same name.
  std::string name;
  /// The setting's title in the user's language.
  std::string title;
  Kind kind{};
  /// The values of a choice, in the order of the menu; for an on/off setting, on and then off. Empty for a
  /// number.
  std::vector<SettingChoice> choices;
  /// The inclusive bounds of a number, and its unit.
  std::int64_t minimum = 0;
  std::int64_t maximum = 0;
  std::string unit;
  /// The job's value: the stored one, else the default.
  std::string value;
  /// The edge from which a number of millimetres is trimmed.
  Edge trimmedEdge = Edge::none;
};

/// One panel of the print dialog. Any operation may raise an exception of the standard library; the host then
/// reports it and no longer uses the panel.
class PrintPanel {
 public:
  virtual ~PrintPanel() = default;
  /// The panel's title in the user's language.
  [[nodiscard]] virtual std::string panelName() = 0;
  /// The kind of panel as its plug-in names it, or null.
  [[nodiscard]] virtual ObjectRef panelKind() = 0;
  /// The view, the same one at each call, or null when it could not be loaded. It belongs to the panel.
  [[nodiscard]] virtual View* panelView() = 0;
  /// The text of each stored value under its setting's title, and under kSummaryDisplayOrderKey the order of
  /// the titles, which may be missing. May replace unsaved changes in the controls by the stored values.
  [[nodiscard]] virtual Dictionary summaryInfo() = 0;
  /// Shows the stored values. The host calls it each time before it shows the view.
  virtual void willShow() = 0;
  /// Whether the user may leave the panel; if not, the host shows it again.
  [[nodiscard]] virtual bool shouldHide() = 0;
  /// Whether the host offers help for the panel.
  [[nodiscard]] virtual bool shouldShowHelp() = 0;
  /// The PPD option keywords that the panel sets, the same list at each call. It belongs to the panel.
  [[nodiscard]] virtual const std::vector<std::string>& supportedPPDOptionKeys() = 0;
  /// The settings of the supported keywords, in the same order, with the job's current values. Changes no
  /// control.
  [[nodiscard]] virtual std::vector<PanelSetting> settings() const = 0;
  /// Whether the host may print.
  [[nodiscard]] virtual bool shouldPrint() = 0;
  /// Stores the controls' values in the print settings. On failure returns false and sets `*error` to the
  /// reason, unless `error` is null.
  virtual bool saveValuesAndReturnError(std::string* error) = 0;
  /// Shows the stored values in the controls. Fails in the same way.
  virtual bool restoreValuesAndReturnError(std::string* error) = 0;
};

using PanelList = std::vector<std::unique_ptr<PrintPanel>>;

/// The principal object of a plug-in bundle.
class Plugin {
 public:
  virtual ~Plugin() = default;
  /// Sets the plug-in's bundle. Returns false if it is null.
  virtual bool initWithBundle(std::shared_ptr<Bundle> bundle) = 0;
  /// Makes the panels for this extension type; null if there are none. The caller owns the panels.
  [[nodiscard]] virtual std::unique_ptr<PanelList> PDEPanelsForType(
      std::optional<std::string_view> type, std::shared_ptr<HostCallback> hostInfo) = 0;
};

/// The one function that a plug-in module exports, under the name of its principal class (NSPrincipalClass in
/// its bundle's Info.plist), with C linkage. It makes the plug-in, or leaves `made` null when it cannot.
using MakePlugin = void (*)(std::unique_ptr<Plugin>& made) noexcept;

}  // namespace tandemtrim::platform
