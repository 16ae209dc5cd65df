#include "host/dialog/open_panel.hpp"

#include <utility>

#include "host/callback.hpp"

namespace tandemtrim::host {

namespace {

// The same panel without a screen, which is asked what the printer allows; a bundle need not have one.
std::optional<LoadedPlugin> withoutScreen(const PluginBundle& bundle, const Note& note) {
  try {
    return loadPlugin(bundle, kMemoryModule);
  } catch (const PluginFailure& failure) {
    note("values that the printer does not allow cannot be told: " + std::string(failure.what()));
    return std::nullopt;
  }
}

}  // namespace

OpenPanel::OpenPanel(const std::string& bundle, platform::linux::PrintSettings& settings, ppd_file_t* ppd,
                     const Note& note)
    : OpenPanel(openBundle(bundle, note), settings, ppd, note) {}

OpenPanel::OpenPanel(const PluginBundle& bundle, platform::linux::PrintSettings& settings, ppd_file_t* ppd,
                     const Note& note)
    : settings_(settings),
      ppd_(ppd),
      plugin_(loadPlugin(bundle, kGtkModule)),
      screenless_(withoutScreen(bundle, note)),
      panels_(openPanels(plugin_, std::make_shared<Callback>(settings_, ppd_))) {
  title_ = call("panelName", [](auto& panel) { return panel.panelName(); });
  keywords_ = call("supportedPPDOptionKeys", [](auto& panel) { return panel.supportedPPDOptionKeys(); });
  view_ = call("panelView", [](auto& panel) { return panel.panelView(); });
  if (view_ == nullptr || view_->toolkitView() == nullptr)
    throw unusable(bundle.path, "its view could not be loaded");
  // Set-up alone shows nothing of what the settings hold.
  restore();
}

void OpenPanel::willShow() {
  call("willShow", [](auto& panel) { panel.willShow(); });
  takeUntouched();
}

void OpenPanel::setPaperSize(double width, double height) const {
  call("setPaperSize", [&](auto&) { view_->setPaperSize(width, height); });
}

bool OpenPanel::shouldHide() const {
  return call("shouldHide", [](auto& panel) { return panel.shouldHide(); });
}

bool OpenPanel::shouldShowHelp() const {
  return call("shouldShowHelp", [](auto& panel) { return panel.shouldShowHelp(); });
}

bool OpenPanel::shouldPrint() const {
  return call("shouldPrint", [](auto& panel) { return panel.shouldPrint(); });
}

OpenPanel::StoredValues OpenPanel::storedValues() const {
  StoredValues values;
  for (const auto& keyword : keywords_) settings_.PMPrintSettingsGetValue(keyword, values[keyword]);
  return values;
}

void OpenPanel::saveAll() const {
  std::string error;
  if (!call("saveValuesAndReturnError", [&](auto& panel) { return panel.saveValuesAndReturnError(&error); }))
    throw PluginFailure("the plug-in " + plugin_.bundle + " could not save the settings: " + error);
}

void OpenPanel::takeUntouched() {
  stored_ = storedValues();
  saveAll();
  untouched_ = storedValues();
  for (const auto& [keyword, value] : stored_) settings_.PMPrintSettingsSetValue(keyword, value, false);
}

void OpenPanel::save() {
  saveAll();
  for (const auto& [keyword, value] : storedValues()) {
    if (value != untouched_[keyword])
      stored_[keyword] = untouched_[keyword] = value;
    else if (stored_[keyword])
      settings_.PMPrintSettingsSetValue(keyword, stored_[keyword], false);
  }
}

void OpenPanel::restore() {
  std::string error;
  if (!call("restoreValuesAndReturnError",
            [&](auto& panel) { return panel.restoreValuesAndReturnError(&error); }))
    throw PluginFailure("the plug-in " + plugin_.bundle + " could not show the settings: " + error);
  takeUntouched();
}

// Building a summary puts what is stored back into the controls.
std::vector<SummaryRow> OpenPanel::summary() {
  auto rows = orderedSummary(call("summaryInfo", [](auto& panel) { return panel.summaryInfo(); }));
  takeUntouched();
  return rows;
}

std::vector<IllegalValue> OpenPanel::illegalValues() const {
  return screenless_ ? host::illegalValues(*screenless_, settings_, ppd_) : std::vector<IllegalValue>{};
}

}  // namespace tandemtrim::host
