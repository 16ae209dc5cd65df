#include "host/dialog/presets/printer_presets.hpp"

#include <algorithm>
#include <utility>

#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kYes = 1;

bool isKept(const std::vector<KeptPreset>& presets, const std::string& name) {
  return std::ranges::any_of(presets, [&](const auto& kept) { return kept.preset.name == name; });
}

// Whether the options have what these others ask for.
bool holds(const Options& options, const Options& asked) {
  return std::ranges::all_of(asked, [&](const Option& option) {
    return std::ranges::any_of(options, [&](const Option& other) {
      return isSameKeyword(other.keyword, option.keyword) && other.value == option.value;
    });
  });
}

}  // namespace

PrinterPresets::PrinterPresets(Gtk::Window& parent, Report report, Settings settings)
    : report_(std::move(report)), settings_(std::move(settings)), name_(parent), questions_(parent) {}

void PrinterPresets::open(const std::string& family, const std::string& printersKey) {
  family_ = family;
  printersKey_ = printersKey;
}

std::optional<Preset> PrinterPresets::begin() {
  if (std::exchange(begun_[printersKey_], true)) return std::nullopt;
  const auto name = presetOfPrinter(family_, printersKey_);
  if (!name) return std::nullopt;
  try {
    return chosen_[printersKey_] = findPreset(family_, *name, report_);
  } catch (const Failure& failure) {
    chosen_.erase(printersKey_);
    report_(failure.what());
    return std::nullopt;
  }
}

PresetRow::Events PrinterPresets::events() {
  return {[this](const auto& name) { tryTo([&] { choose(name); }); },
          [this] { tryTo([&] {
                     save({chosen().name, settings_.ofPanel(), chosen().options});
                   }); },
          [this] { tryTo([&] { settings_.show(chosen()); }); },
          [this] { name_.ask(isChosen() ? chosen().name : "", [this](const auto& name) { saveAs(name); }); },
          [this] { name_.ask(chosen().name, [this](const auto& name) { tryTo([&] { rename(name); }); }); },
          [this] { remove(); },
          [this](bool isPrinters) {
            tryTo([&] {
              setPresetOfPrinter(family_, printersKey_,
                                 isPrinters ? std::optional(chosen().name) : std::nullopt);
            });
          },
          [this] { return list(); }};
}

PresetList PrinterPresets::list() const {
  PresetList list;
  for (const auto& [preset, isOwn] : presetsOf(family_, report_)) {
    list.names.push_back(preset.name);
    if (isChosen() && chosen().name == preset.name) list.isOwn = isOwn;
  }
  if (!isChosen()) return list;
  list.chosen = chosen().name;
  list.isChanged = isChanged();
  list.isPrinters = presetOfPrinter(family_, printersKey_) == chosen().name;
  return list;
}

bool PrinterPresets::isChanged() const { return !holds(settings_.ofPanel(), chosen().panel); }

void PrinterPresets::choose(const std::string& name) {
  const auto& preset = chosen_[printersKey_] = findPreset(family_, name, report_);
  settings_.show(preset);
}

void PrinterPresets::save(const Preset& preset) {
  savePreset(family_, preset);
  chosen_[printersKey_] = preset;
}

void PrinterPresets::saveAs(const std::string& name) {
  const Preset preset{name, settings_.ofPanel(), isChosen() ? chosen().options : Options{}};
  if (!isKept(presetsOf(family_, report_), name)) return tryTo([&] { save(preset); });
  questions_.ask({filled(localized(kPresetTakenText), {{"[name]", name}})},
                 {{localized(kCancelText), Gtk::ResponseType::CANCEL}, {localized(kReplaceText), kYes}},
                 Gtk::ResponseType::CANCEL, [this, preset](int chosen) {
                   if (chosen == kYes) tryTo([&] { save(preset); });
                 });
}

void PrinterPresets::rename(const std::string& name) {
  if (name == chosen().name) return;
  renamePreset(family_, chosen().name, name, report_);
  chosen_[printersKey_].name = name;
}

void PrinterPresets::remove() {
  questions_.ask({filled(localized(kDeleteThisPresetText), {{"[name]", chosen().name}})},
                 {{localized(kCancelText), Gtk::ResponseType::CANCEL}, {localized(kDeleteText), kYes}},
                 Gtk::ResponseType::CANCEL, [this](int answer) {
                   if (answer != kYes) return;
                   tryTo([this] {
                     deletePreset(family_, chosen().name, report_);
                     chosen_.erase(printersKey_);
                   });
                 });
}

void PrinterPresets::tryTo(const std::function<void()>& act) {
  try {
    act();
  } catch (const Failure& failure) {
    report_(failure.what());
    questions_.showMessage(localized(kPresetsUnchangedText) + '\n' + failure.what());
  }
  settings_.update();
}

}  // namespace tandemtrim::host
