#include "host/panel_session.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include "host/callback.hpp"
#include "host/legality.hpp"
#include "host/person.hpp"
#include "host/plain_text.hpp"
#include "platform/memory/panel_view.hpp"

namespace tandemtrim::host {
namespace {

using platform::memory::ControlKind;
using platform::memory::ControlState;
using platform::memory::PanelView;
using StoredValues = std::map<std::string, std::optional<std::string>>;

std::optional<std::string> stored(const platform::PrintSettings& settings, const std::string& keyword) {
  std::optional<std::string> value;
  const bool found = settings.PMPrintSettingsGetValue(keyword, value) == platform::kNoError;
  return found ? value : std::nullopt;
}

StoredValues storedValues(const platform::PrintSettings& settings, const std::vector<std::string>& keywords) {
  StoredValues values;
  for (const auto& keyword : keywords) values[keyword] = stored(settings, keyword);
  return values;
}

PanelView& viewOf(const std::string& bundle, platform::PrintPanel& panel) {
  auto* const view = callPlugin(bundle, "panelView", [&] { return panel.panelView(); });
  if (view == nullptr) throw unusable(bundle, "its view could not be loaded");
  auto* const memoryView = dynamic_cast<PanelView*>(view);
  if (memoryView == nullptr) throw unusable(bundle, "its view needs a screen");
  return *memoryView;
}

std::vector<ControlState> controlsOf(const std::string& bundle, const PanelView& view) {
  return callPlugin(bundle, "its view", [&] { return settingControls(view); });
}

std::string withoutColon(std::string label) {
  constexpr std::array<std::string_view, 4> kEndings{":", "\uFF1A", " ", "\u00A0"};
  for (const auto* ending = kEndings.begin(); ending != kEndings.end();) {
    ending = std::ranges::find_if(kEndings, [&](auto candidate) { return label.ends_with(candidate); });
    if (ending != kEndings.end()) label.resize(label.size() - ending->size());
  }
  return label;
}

// `shown` are all controls of the panel in their order.
std::string labelOf(const std::vector<ControlState>& shown, const ControlState& control) {
  if (control.kind == ControlKind::checkBox && !control.text.empty()) return control.text;
  const ControlState* before = nullptr;
  for (const auto& candidate : shown) {
    if (candidate.outlet == control.outlet) break;
    before = &candidate;
  }
  const bool hasLabel = before != nullptr && before->kind == ControlKind::label && !before->text.empty();
  return hasLabel ? withoutColon(before->text) : std::string(control.name);
}

// A panel lists its keywords in the order in which its controls stand from top to bottom. That is how a host
// that knows neither finds the control of a keyword.
std::vector<SettingLimits> limitsOf(const std::string& bundle, const std::vector<ControlState>& controls,
                                    const std::vector<std::string>& keywords) {
  if (controls.size() != keywords.size()) {
    throw unusable(bundle, "it shows " + std::to_string(controls.size()) + " settings for " +
                               std::to_string(keywords.size()) + " option keywords");
  }
  std::vector<SettingLimits> limits;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto& control = controls[i];
    SettingLimits setting{std::string(control.name), keywords[i], std::nullopt, std::nullopt,
                          choicesOf(control)};
    if (control.kind == ControlKind::textBox) {
      setting.min = control.min;
      setting.max = control.max;
    }
    limits.push_back(std::move(setting));
  }
  return limits;
}

void refuse(const ControlState& control, const std::string& keyword, const std::string& value) {
  const auto suggested = suggestedValue(control, value);
  std::string remedy = "-o " + keyword + "=" + suggested;
  if (control.enabled) remedy += " or --set " + std::string(control.name) + "=" + suggested;
  throw Failure(keyword + "=" + shortText(value) +
                " is not allowed here (allowed: " + allowedValues(control) +
                "); nothing was sent. Change it by " + remedy + ", or send it as it stands by --force");
}

// What would be stored for a control if the panel saved now.
std::optional<std::string> shownValue(const ControlState& control) {
  if (control.kind == ControlKind::textBox) return control.text;
  if (control.kind == ControlKind::checkBox) return control.state == platform::CheckBox::kOn ? "On" : "Off";
  return control.selected ? control.choices.at(*control.selected).value : std::nullopt;
}

// A setting that the person set anew counts by what its control shows now, any other by what is stored.
void refuseIllegalValues(const std::vector<ControlState>& controls, const std::vector<SettingLimits>& limits,
                         const std::set<std::string>& setAnew, const StoredValues& before) {
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto& keyword = limits[i].keyword;
    const auto value = setAnew.contains(limits[i].name) ? shownValue(controls[i]) : before.at(keyword);
    if (value && !isLegal(controls[i], *value)) refuse(controls[i], keyword, *value);
  }
}

// What the person did not touch goes to the printer as it was stored, whatever the controls made of it.
void putBack(platform::PrintSettings& settings, const std::vector<SettingLimits>& limits,
             const std::set<std::string>& setAnew, const StoredValues& before) {
  for (const auto& [name, keyword, min, max, choices] : limits) {
    const auto& value = before.at(keyword);
    if (!setAnew.contains(name) && value) settings.PMPrintSettingsSetValue(keyword, value, false);
  }
}

void save(const std::string& bundle, platform::PrintPanel& panel) {
  std::string error;
  if (!callPlugin(bundle, "saveValuesAndReturnError",
                  [&] { return panel.saveValuesAndReturnError(&error); })) {
    throw PluginFailure("the plug-in " + bundle + " could not save the settings: " + error);
  }
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

std::vector<IllegalValue> illegalValues(const LoadedPlugin& plugin,
                                        const platform::linux::PrintSettings& settings, ppd_file_s* ppd) {
  auto copy = settings;
  const auto panels = openPanels(plugin, std::make_shared<Callback>(copy, ppd));
  auto& panel = *panels->front();
  const auto keywords =
      callPlugin(plugin.bundle, "supportedPPDOptionKeys", [&] { return panel.supportedPPDOptionKeys(); });
  auto& view = viewOf(plugin.bundle, panel);
  const auto controls = controlsOf(plugin.bundle, view);
  const auto shown = callPlugin(plugin.bundle, "its view", [&] { return view.controls(); });
  // Raises when a keyword has no control.
  limitsOf(plugin.bundle, controls, keywords);
  std::vector<IllegalValue> illegal;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const auto value = stored(copy, keywords[i]);
    if (value && !isLegal(controls[i], *value)) {
      illegal.push_back({labelOf(shown, controls[i]), keywords[i], *value, controls[i],
                         suggestedValue(controls[i], *value)});
    }
  }
  return illegal;
}

PanelResult playPanel(const LoadedPlugin& plugin, platform::PrintSettings& settings, ppd_file_s* ppd,
                      const std::vector<Input>& inputs, bool force, const Note& note) {
  const auto& bundle = plugin.bundle;
  const auto panels = openPanels(plugin, std::make_shared<Callback>(settings, ppd));
  auto& panel = *panels->front();
  const auto keywords =
      callPlugin(bundle, "supportedPPDOptionKeys", [&] { return panel.supportedPPDOptionKeys(); });

  auto& view = viewOf(bundle, panel);
  callPlugin(bundle, "willShow", [&] { panel.willShow(); });
  PanelResult result;
  result.limits = limitsOf(bundle, controlsOf(bundle, view), keywords);

  const auto before = storedValues(settings, keywords);
  const auto setAnew = callPlugin(bundle, "what the person did", [&] { return act(view, inputs, note); });
  if (!force) refuseIllegalValues(controlsOf(bundle, view), result.limits, setAnew, before);
  save(bundle, panel);
  if (force) putBack(settings, result.limits, setAnew, before);
  for (const auto& keyword : keywords) {
    if (!stored(settings, keyword))
      note("the panel saved no value for " + keyword + "; the job goes without it");
  }
  result.summary = orderedSummary(callPlugin(bundle, "summaryInfo", [&] { return panel.summaryInfo(); }));
  return result;
}

}  // namespace tandemtrim::host
