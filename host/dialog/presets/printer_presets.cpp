#include "host/dialog/presets/printer_presets.hpp"

#include <algorithm>
#include <utility>

#include <glibmm/main.h>

#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kYes = 1;

bool isKept(const std::vector<KeptPreset>& presets, const std::string& name) {
  return std::ranges::any_of(presets, [&](const auto& kept) { return kept.preset.name == name; });
}

}  // namespace

PrinterPresets::PrinterPresets(Gtk::Window& parent, std::optional<std::string> wanted, Report report,
                               Settings settings)
    : report_(std::move(report)),
      settings_(std::move(settings)),
      name_(parent),
      questions_(parent),
      faults_(parent),
      wanted_(std::move(wanted)) {}

void PrinterPresets::open(const std::string& family, const std::string& printersKey) {
  family_ = family;
  printersKey_ = printersKey;
}

void PrinterPresets::close() {
  open({}, {});
  if (wanted_) static_cast<void>(begin());
}

std::optional<Preset> PrinterPresets::begin() {
  if (std::exchange(begun_[printersKey_], true)) return std::nullopt;
  const auto wanted = std::exchange(wanted_, std::nullopt);
  const auto name = wanted ? wanted : presetOfPrinter(family_, printersKey_);
  if (!name) return std::nullopt;
  try {
    chosen_.insert_or_assign(printersKey_, ChosenPreset{family_, findPreset(family_, *name, report_)});
    return preset();
  } catch (const Failure& failure) {
    report_(failure.fact().english());
    if (!wanted) return std::nullopt;
    settings_.giveUpPrint();
    questions_.showMessage(filled(localized(kNoSuchPresetText), {{"[name]", *name}}));
    return std::nullopt;
  }
}

Options PrinterPresets::options(const Options& asked) const {
  const auto known = chosen_.find(printersKey_);
  return known == chosen_.end() ? Options() : optionsOf(known->second, asked);
}

bool PrinterPresets::showPages(const Options& asked) {
  if (!isChosen() || preset().options.empty() || chosen().pages) return false;
  showOptions(options(asked));
  return true;
}

void PrinterPresets::showOptions(const Options& options) {
  const auto illegal = settings_.showOnPages(options);
  for (const auto& value : illegal) chosen().refused.push_back(value.setting.keyword);
  chosen().pages = shownOnPages();
  if (illegal.empty()) return;
  settings_.giveUpPrint();
  questions_.ask({localized(kNotAllowedText), problemTexts(illegal, {})},
                 {{localized(kCloseText), Gtk::ResponseType::CLOSE}}, Gtk::ResponseType::CLOSE, [](int) {});
}

PresetRow::Events PrinterPresets::events() {
  return {[this](const auto& name) { tryTo([&] { choose(name); }); },
          [this] { saveChanges(); },
          [this] { tryTo([&] { show(); }); },
          [this] {
            const auto begin = isChosen() ? NameWindow::Answer{preset().name, !preset().options.empty()}
                                          : NameWindow::Answer{};
            name_.ask(begin, true, [this](const auto& answer) { saveAs(answer); });
          },
          [this] { name_.ask({preset().name}, false, [this](const auto& answer) { rename(answer.name); }); },
          [this] { remove(); },
          [this](bool isPrinterDefault) {
            tryTo([&] {
              setPresetOfPrinter(family_, printersKey_,
                                 isPrinterDefault ? std::optional(preset().name) : std::nullopt);
            });
          },
          [this] { return list(); }};
}

// The message leaves out the administrator's faulty files: only the administrator can correct them, and the
// terminal program reports them.
PresetList PrinterPresets::list() {
  const auto [presets, faults] = presetsOf(family_);
  std::vector<Fact> facts;
  for (const auto& fault : faults) {
    if (!fault.isOwn || !reportedFiles_.insert(fault.file).second) continue;
    if (auto fact = setAside(fault)) facts.push_back(*std::move(fact));
  }
  if (!facts.empty()) showFaults(facts);
  PresetList list;
  for (const auto& [kept, isOwn] : presets) {
    list.names.push_back(kept.name);
    if (isChosen() && preset().name == kept.name) list.isOwn = isOwn;
  }
  if (!isChosen()) return list;
  list.chosen = preset().name;
  list.isChanged = isChanged(chosen_.at(printersKey_), settings_.ofPanel(),
                             preset().options.empty() ? std::nullopt : shownOnPages());
  list.isPrinterDefault = presetOfPrinter(family_, printersKey_) == preset().name;
  return list;
}

// Shows the message later, because the row is shown together with the dialog.
void PrinterPresets::showFaults(const std::vector<Fact>& facts) {
  std::string message;
  for (const auto& fact : facts) {
    report_(fact.english());
    message += (message.empty() ? "" : "\n") + fact.in(localized);
  }
  settings_.giveUpPrint();
  Glib::signal_idle().connect_once([this, alive = std::weak_ptr<void>(alive_), message] {
    if (!alive.expired()) faults_.showMessage(message);
  });
}

std::optional<Options> PrinterPresets::shownOnPages() const {
  try {
    return settings_.ofPages();
  } catch (const Failure&) {
    return std::nullopt;
  }
}

void PrinterPresets::choose(const std::string& name) {
  chosen_.insert_or_assign(printersKey_, ChosenPreset{family_, findPreset(family_, name, report_), true});
  show();
}

void PrinterPresets::show() {
  settings_.showOnPanel(preset().panel);
  chosen().isByHand = true;
  chosen().refused.clear();
  if (!preset().options.empty()) showOptions(options({}));
}

bool PrinterPresets::save(const std::string& name, bool withPages, Taken taken,
                          const std::optional<Preset>& known) {
  ChosenPreset saved{family_, {name, settings_.ofPanel(), {}}, true};
  if (withPages) saved.preset.options = settings_.ofPages();
  if (taken == Taken::isReplaced)
    savePreset(family_, saved.preset);
  else if (!savePresetOver(family_, known, saved.preset))
    return false;
  chosen_.insert_or_assign(printersKey_, saved);
  chosen().pages = shownOnPages();
  return true;
}

void PrinterPresets::saveChanges() {
  const auto act = [this](Taken taken) {
    const auto known = preset();
    return save(known.name, !known.options.empty(), taken, known);
  };
  bool isSaved = true;
  tryTo([&] { isSaved = act(Taken::refuses); });
  if (!isSaved) askToReplace(kPresetChangedMeanwhileText, preset().name, act);
}

void PrinterPresets::saveAs(const NameWindow::Answer& answer) {
  replaceIfTaken(answer.name, [this, answer](Taken taken) {
    return save(answer.name, answer.withPages, taken, std::nullopt);
  });
}

void PrinterPresets::rename(const std::string& name) {
  if (name == preset().name) return;
  replaceIfTaken(name, [this, name](Taken taken) {
    renameTo(name, taken);
    return true;
  });
}

// Asks first when there is a preset of that name.
void PrinterPresets::replaceIfTaken(const std::string& name, const Replacement& act) {
  bool isTaken = isKept(presetsOf(family_).presets, name);
  if (!isTaken) tryTo([&] { isTaken = !act(Taken::refuses); });
  if (isTaken) askToReplace(kPresetTakenText, name, act);
}

void PrinterPresets::askToReplace(const char* question, const std::string& name, const Replacement& act) {
  questions_.ask({filled(localized(question), {{"[name]", name}})},
                 {{localized(kCancelText), Gtk::ResponseType::CANCEL}, {localized(kReplaceText), kYes}},
                 Gtk::ResponseType::CANCEL, [this, act](int answer) {
                   if (answer == kYes) tryTo([&] { static_cast<void>(act(Taken::isReplaced)); });
                 });
}

// Also renames it on each printer where it is chosen.
void PrinterPresets::renameTo(const std::string& newName, Taken taken) {
  const auto name = preset().name;
  renamePreset(family_, name, newName, taken, report_);
  for (auto& [printer, chosen] : chosen_) {
    if (isChosenOf(chosen, name)) chosen.preset.name = newName;
  }
}

void PrinterPresets::remove() {
  questions_.ask({filled(localized(kDeleteThisPresetText), {{"[name]", preset().name}})},
                 {{localized(kCancelText), Gtk::ResponseType::CANCEL}, {localized(kDeleteText), kYes}},
                 Gtk::ResponseType::CANCEL, [this](int answer) {
                   if (answer != kYes) return;
                   tryTo([this] {
                     const auto name = preset().name;
                     deletePreset(family_, name, report_);
                     std::erase_if(chosen_,
                                   [&](const auto& entry) { return isChosenOf(entry.second, name); });
                   });
                 });
}

void PrinterPresets::tryTo(const std::function<void()>& act) {
  try {
    act();
  } catch (const Failure& failure) {
    report_(failure.fact().english());
    questions_.showMessage(localized(kPresetsUnchangedText) + '\n' + failure.fact().in(localized));
  }
  settings_.update();
}

}  // namespace tandemtrim::host
