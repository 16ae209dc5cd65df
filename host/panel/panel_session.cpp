#include "host/panel/panel_session.hpp"

#include <algorithm>

#include "adapters/memory/panel_view.hpp"
#include "host/changed_entries.hpp"
#include "host/job/legality.hpp"
#include "host/panel/callback.hpp"
#include "host/panel/panel_options.hpp"
#include "host/panel/user_input.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using platform::memory::PanelView;

PanelView& screenlessView(const std::string& bundle, platform::View& view) {
  auto* const screenless = dynamic_cast<PanelView*>(&view);
  if (screenless == nullptr) throw incomplete(bundle, "its view needs a screen");
  return *screenless;
}

void refuse(const IllegalValue& illegal, bool isGreyed) {
  const auto& [setting, suggested] = illegal;
  std::string remedy = "-o " + setting.keyword + "=" + suggested;
  if (!isGreyed) remedy += " or --set " + setting.name + "=" + suggested;
  throw Failure(setting.keyword + "=" + shortText(setting.value) +
                " is not allowed here (allowed: " + allowedValues(setting) +
                "); nothing was sent. Change it with " + remedy + ", or send it unchanged with --force");
}

bool contains(const Options& options, const std::string& keyword) {
  return std::ranges::find(options, keyword, &Option::keyword) != options.end();
}

// Adds the defaults that the settings lack, and returns the options of these keywords that they had before.
Options addDefaults(const std::vector<std::string>& keywords, const Options& defaults,
                    platform::PrintSettings& settings) {
  auto before = storedOptions(settings, keywords);
  auto missing = defaults;
  std::erase_if(missing, [&](const Option& option) { return contains(before, option.keyword); });
  storeOptions(missing, keywords, settings);
  return before;
}

std::string correctedText(const IllegalValue& corrected) {
  const auto& [setting, suggested] = corrected;
  return setting.keyword + ": the default " + shortText(setting.value) +
         " is not allowed on this printer (allowed: " + allowedValues(setting) + "); " + suggested +
         " is used instead";
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
                           platform::PrintSettings& settings, ppd_file_s* ppd,
                           const Options& printersDefaults)
    : settings_(settings),
      plugin_(loadPlugin(bundle, moduleEnding)),
      defaults_(addDefaults(bundle.info.optionKeywords(), printersDefaults, settings)),
      panels_(openWith(ppd)),
      title_(call("panelName", [](auto& panel) { return panel.panelName(); })),
      keywords_(call("supportedPPDOptionKeys", [](auto& panel) { return panel.supportedPPDOptionKeys(); })) {
  if (removeUnknownDefaults()) panels_ = openWith(ppd);
  defaults_ = changedEntries(defaults_, storedOptions(settings_, bundle.info.optionKeywords()));
}

std::unique_ptr<platform::PanelList> PanelSession::openWith(ppd_file_s* ppd) {
  return openPanels(plugin_, std::make_shared<Callback>(settings_, ppd));
}

// Removes defaults that the panel does not know, so that its own apply: its choices may have other names than
// the printer's. Returns whether there were any.
bool PanelSession::removeUnknownDefaults() {
  bool removes = false;
  for (const auto& setting : settings()) {
    const bool isKnown = setting.kind == platform::PanelSetting::Kind::number ||
                         isLegal(setting, setting.value) || contains(defaults_, setting.keyword);
    if (isKnown) continue;
    settings_.PMPrintSettingsSetValue(setting.keyword, std::nullopt, false);
    removes = true;
  }
  return removes;
}

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
    if (loaded == nullptr) throw incomplete(plugin_.bundle, "its view could not be loaded");
    // A newly loaded view does not show the settings yet.
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
    throw PluginFailure(Fact("the plug-in [bundle] could not show the settings: [words]"_fact,
                             {{"[bundle]", plugin_.bundle}, {"[words]", error}}));
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
    throw PluginFailure(Fact("the plug-in [bundle] could not save the settings: [words]"_fact,
                             {{"[bundle]", plugin_.bundle}, {"[words]", error}}));
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

void PanelSession::replace(const std::vector<IllegalValue>& values) {
  for (const auto& [setting, suggested] : values)
    settings_.PMPrintSettingsSetValue(setting.keyword, suggested, false);
  restore();
}

void PanelSession::correct() {
  save();
  replace(illegalChoices());
}

void PanelSession::countAsDefaults(const std::set<std::string>& names) {
  for (const auto& setting : settings()) {
    if (names.contains(setting.name)) defaults_.push_back({setting.keyword, setting.value});
  }
}

bool PanelSession::isDefault(const IllegalValue& illegal) const {
  const Option option{illegal.setting.keyword, illegal.setting.value};
  return std::ranges::find(defaults_, option) != defaults_.end();
}

std::vector<IllegalValue> PanelSession::illegalChoices() const {
  auto illegal = illegalValues(settings());
  std::erase_if(illegal, [&](const auto& value) { return isDefault(value); });
  return illegal;
}

std::vector<IllegalValue> PanelSession::illegalDefaults() const {
  auto illegal = illegalValues(settings());
  std::erase_if(illegal, [&](const auto& value) { return !isDefault(value); });
  return illegal;
}

std::vector<IllegalValue> PanelSession::correctDefaults() {
  if (!isSwitchedOn(settings())) return {};
  auto illegal = illegalDefaults();
  if (illegal.empty()) return illegal;
  replace(illegal);
  for (const auto& [setting, suggested] : illegal) defaults_.push_back({setting.keyword, suggested});
  return illegal;
}

void PanelSession::removeDefaults() {
  for (const auto& [keyword, value] : defaults_) {
    std::optional<std::string> stored;
    settings_.PMPrintSettingsGetValue(keyword, stored);
    if (stored == value) settings_.PMPrintSettingsSetValue(keyword, std::nullopt, false);
  }
}

// Building a summary restores the stored values in the controls.
std::vector<SummaryRow> PanelSession::summary() {
  auto rows = orderedSummary(call("summaryInfo", [](auto& panel) { return panel.summaryInfo(); }));
  if (view_ != nullptr) readUnedited();
  return rows;
}

PanelResult playPanel(const PluginBundle& bundle, platform::PrintSettings& settings, ppd_file_s* ppd,
                      const Options& printersDefaults, const CommandLine& line, const Report& report) {
  PanelSession session(bundle, kMemoryModule, settings, ppd, printersDefaults);
  auto& view = screenlessView(bundle.path, session.view());
  session.willShow();
  const auto edits = callPlugin(bundle.path, "the input",
                                [&] { return enterInputs(view, session.settings(), line, report); });
  session.save(edits.all);
  session.countAsDefaults(edits.restored);

  if (!line.force) {
    if (const auto illegal = session.illegalChoices(); !illegal.empty()) {
      const auto& name = illegal.front().setting.name;
      refuse(illegal.front(),
             callPlugin(bundle.path, "its view", [&] { return !view.control(name).enabled; }));
    }
    for (const auto& corrected : session.correctDefaults()) report(correctedText(corrected));
  }
  PanelResult result{{}, session.settings()};
  for (const auto& illegal : session.illegalDefaults())
    result.illegalDefaults.push_back(illegal.setting.keyword);
  for (const auto& keyword : session.keywords()) {
    std::optional<std::string> value;
    settings.PMPrintSettingsGetValue(keyword, value);
    if (!value) report("the panel saved no value for " + keyword + "; the job is sent without it");
  }
  result.summary = session.summary();
  return result;
}

}  // namespace tandemtrim::host
