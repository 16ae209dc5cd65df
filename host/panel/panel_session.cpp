#include "host/panel/panel_session.hpp"

#include "adapters/memory/panel_view.hpp"
#include "host/changed_entries.hpp"
#include "host/job/legality.hpp"
#include "host/panel/callback.hpp"
#include "host/panel/user_input.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using platform::memory::PanelView;

PanelView& screenlessView(const std::string& bundle, platform::View& view) {
  auto* const screenless = dynamic_cast<PanelView*>(&view);
  if (screenless == nullptr) throw unusable(bundle, "its view needs a screen");
  return *screenless;
}

void refuse(const IllegalValue& illegal, bool isGreyed) {
  const auto& [setting, suggested] = illegal;
  std::string remedy = "-o " + setting.keyword + "=" + suggested;
  if (!isGreyed) remedy += " or --set " + setting.name + "=" + suggested;
  throw Failure(setting.keyword + "=" + shortText(setting.value) +
                " is not allowed here (allowed: " + allowedValues(setting) +
                "); nothing was sent. Change it by " + remedy + ", or send it as it stands by --force");
}

}  // namespace

std::vector<SummaryRow> orderedSummary(const platform::Dictionary& summary) {
  std::vector<SummaryRow> rows;
  const auto add = [&](const std::string& title, const platform::ObjectRef& value) {
    const auto* text = value ? value->as<std::string>() : nullptr;
    if (text != nullptr) rows.push_back({title, *text});
  };
  const auto order = platform::find(summary, platform::kSummaryDisplayOrderKey);
  if (const auto* titles = order ? order->as<platform::Array>() : nullptr) {
    for (const auto& entry : *titles) {
      const auto* title = entry ? entry->as<std::string>() : nullptr;
      if (title != nullptr) add(*title, platform::find(summary, *title));
    }
  } else {
    for (const auto& [title, value] : summary) add(title, value);
  }
  return rows;
}

std::vector<IllegalValue> illegalValues(const std::vector<platform::PanelSetting>& settings) {
  std::vector<IllegalValue> illegal;
  for (const auto& setting : settings) {
    if (!isLegal(setting, setting.value))
      illegal.push_back({setting, suggestedValue(setting, setting.value)});
  }
  return illegal;
}

PanelSession::PanelSession(const PluginBundle& bundle, const char* moduleEnding,
                           platform::PrintSettings& settings, ppd_file_s* ppd)
    : settings_(settings),
      plugin_(loadPlugin(bundle, moduleEnding)),
      panels_(openPanels(plugin_, std::make_shared<Callback>(settings_, ppd))),
      title_(call("panelName", [](auto& panel) { return panel.panelName(); })),
      keywords_(call("supportedPPDOptionKeys", [](auto& panel) { return panel.supportedPPDOptionKeys(); })) {}

std::vector<platform::PanelSetting> PanelSession::settings() const {
  return call("settings", [](auto& panel) { return panel.settings(); });
}

bool PanelSession::shouldHide() const {
  return call("shouldHide", [](auto& panel) { return panel.shouldHide(); });
}

bool PanelSession::shouldShowHelp() const {
  return call("shouldShowHelp", [](auto& panel) { return panel.shouldShowHelp(); });
}

bool PanelSession::shouldPrint() const {
  return call("shouldPrint", [](auto& panel) { return panel.shouldPrint(); });
}

platform::View& PanelSession::view() {
  if (view_ == nullptr) {
    auto* const loaded = call("panelView", [](auto& panel) { return panel.panelView(); });
    if (loaded == nullptr) throw unusable(plugin_.bundle, "its view could not be loaded");
    // A view that is just loaded shows nothing of what the settings hold.
    restore();
    view_ = loaded;
  }
  return *view_;
}

void PanelSession::willShow() {
  call("willShow", [](auto& panel) { panel.willShow(); });
  readUnedited();
}

void PanelSession::restore() {
  std::string error;
  if (!call("restoreValuesAndReturnError",
            [&](auto& panel) { return panel.restoreValuesAndReturnError(&error); }))
    throw PluginFailure("the plug-in " + plugin_.bundle + " could not show the settings: " + error);
  readUnedited();
}

PanelSession::StoredValues PanelSession::storedValues() const {
  StoredValues values;
  for (const auto& keyword : keywords_) settings_.PMPrintSettingsGetValue(keyword, values[keyword]);
  return values;
}

void PanelSession::store(const StoredValues& values) const {
  for (const auto& [keyword, value] : values) settings_.PMPrintSettingsSetValue(keyword, value, false);
}

void PanelSession::saveAll() const {
  std::string error;
  if (!call("saveValuesAndReturnError", [&](auto& panel) { return panel.saveValuesAndReturnError(&error); }))
    throw PluginFailure("the plug-in " + plugin_.bundle + " could not save the settings: " + error);
}

void PanelSession::readUnedited() {
  stored_ = storedValues();
  saveAll();
  unedited_ = storedValues();
  store(stored_);
}

void PanelSession::save(const std::set<std::string>& edited) {
  saveAll();
  if (view_ == nullptr) return;
  std::set<std::string> keywords;
  for (const auto& setting : settings()) {
    if (edited.contains(setting.name)) keywords.insert(setting.keyword);
  }
  const auto saved = storedValues();
  for (const auto& [keyword, value] : changedEntries(unedited_, saved)) keywords.insert(keyword);
  for (const auto& keyword : keywords) stored_[keyword] = unedited_[keyword] = saved.at(keyword);
  store(stored_);
}

void PanelSession::correct() {
  save();
  for (const auto& [setting, suggested] : illegalValues(settings()))
    settings_.PMPrintSettingsSetValue(setting.keyword, suggested, false);
  restore();
}

// Building a summary puts the stored values back into the controls.
std::vector<SummaryRow> PanelSession::summary() {
  auto rows = orderedSummary(call("summaryInfo", [](auto& panel) { return panel.summaryInfo(); }));
  if (view_ != nullptr) readUnedited();
  return rows;
}

PanelResult playPanel(const PluginBundle& bundle, platform::PrintSettings& settings, ppd_file_s* ppd,
                      const std::vector<Input>& inputs, bool force, const Report& report) {
  PanelSession session(bundle, kMemoryModule, settings, ppd);
  auto& view = screenlessView(bundle.path, session.view());
  session.willShow();
  const auto edited = callPlugin(bundle.path, "the input",
                                 [&] { return enterInputs(view, session.settings(), inputs, report); });
  session.save(edited);

  PanelResult result{{}, session.settings()};
  if (const auto illegal = illegalValues(result.settings); !force && !illegal.empty()) {
    const auto& name = illegal.front().setting.name;
    refuse(illegal.front(), callPlugin(bundle.path, "its view", [&] { return !view.control(name).enabled; }));
  }
  for (const auto& keyword : session.keywords()) {
    std::optional<std::string> value;
    settings.PMPrintSettingsGetValue(keyword, value);
    if (!value) report("the panel saved no value for " + keyword + "; the job goes without it");
  }
  result.summary = session.summary();
  return result;
}

}  // namespace tandemtrim::host
