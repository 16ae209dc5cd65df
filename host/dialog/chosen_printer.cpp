#include "host/dialog/chosen_printer.hpp"

#include <utility>

#include "host/cups/ppd.hpp"
#include "host/dialog/gtk/page_setup_menus.hpp"
#include "host/dialog/settings/paper.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/panel/job_settings.hpp"

namespace tandemtrim::host {
namespace {

// The option as a setting, with the choices that the printer has for it.
platform::PanelSetting settingOf(ppd_file_t& ppd, const Option& option) {
  const auto* const known = ppdFindOption(&ppd, option.keyword.c_str());
  platform::PanelSetting setting;
  setting.keyword = option.keyword;
  setting.title = known->text;
  setting.kind = platform::PanelSetting::Kind::choice;
  setting.value = option.value;
  for (int i = 0; i < known->num_choices; ++i)
    setting.choices.push_back({known->choices[i].choice, known->choices[i].text});
  return setting;
}

}  // namespace

ChosenPrinter::ChosenPrinter(const CommandLine& line, Glib::RefPtr<Gtk::PrintSettings> suggested,
                             const Report& report, const AskForLogin& ask, DialogWindow& window,
                             Events events)
    : line_(line),
      suggested_(std::move(suggested)),
      report_(report),
      window_(window),
      events_(std::move(events)),
      selection_(window.dialog(), [this](const std::string& printer) { onChoice(printer); }),
      tabs_(window.dialog()),
      presets_(
          window.dialog(), line.preset, report,
          {[this] { return withoutKeywords(panel_.shownOptions(), panel_.illegalDefaults()); },
           [this] { return optionsOfPages(); }, [this](const Options& options) { panel_.show(options); },
           [this](const Options& options) { return showOnPages(options); }, [this] { window_.giveUpPrint(); },
           [this] {
             panel_.updatePresets();
             panel_.updateSheet();
           }}),
      panel_(window.dialog(), line.plugin, report,
             {[this](const Failure& failure) { onPanelFailure(failure); }, events_.onHelp,
              [this] { return otherOptionsIfComplete(); }, [this] { return optionsOfServer(); },
              events_.openDocument, presets_.events(), [this] { return presets_.isChosen(); }}),
      reader_(line.server, ask) {
  window.dialog().property_selected_printer().signal_changed().connect(
      sigc::mem_fun(*this, &ChosenPrinter::onPrinterChanged));
}

void ChosenPrinter::start() {
  panel_.showText(localized(kReadingText));
  reader_.read(line_.printer, [this](Outcome outcome) { onFirstDetails(std::move(outcome)); });
}

void ChosenPrinter::onFirstDetails(Outcome outcome) {
  if (outcome.result) return onDetails(std::move(outcome));
  if (suggested_ && line_.printer && outcome.failure->trouble() == Trouble::noPrinter) {
    line_.printer.reset();
    return start();
  }
  report_(outcome.failure->fact().english());
  panel_.hide();
  window_.giveUpPrint();
  window_.enter(DialogState::ready);
  onPrinterChanged();
  window_.showNotice(failureText(*outcome.failure), [this] {
    window_.enter(DialogState::starting);
    start();
  });
}

std::string ChosenPrinter::destinationOf(const std::string& printer) const {
  return destinationOn(printer, first_);
}

// GTK fills the printer's rows from the settings that it has at this moment.
void ChosenPrinter::onChoice(const std::string& printer) {
  if (liveIn(window_.state()).followsPrinter) changeTabs(printer);
}

void ChosenPrinter::changeTabs(const std::string& printer) {
  if (tabsOf_ == current_.name && !current_.destination.empty()) tabs_.leave(tabsOf_);
  tabsOf_ = printer;
  remembered_ = recall({line_.server, destinationOf(printer)}, report_);
  const auto now = tabs_.settings().settings;
  const auto left = tabs_.leftAt(printer).settings;
  const auto next = left ? settingsOfNextPrinter(now, left, {})
                         : settingsOfNextPrinter(now, remembered_.tabs.settings, line_.options);
  suggest(*next);
  // GTK selects the printer that its settings name.
  next->set_printer(printer);
  tabs_.show(next);
}

// Adds the settings that another program suggests.
void ChosenPrinter::suggest(Gtk::PrintSettings& settings) const {
  if (!suggested_) return;
  suggested_->setting_foreach([&](const Glib::ustring& key, const Glib::ustring& value) {
    if (!settings.has_key(key)) settings.set(key, value);
  });
}

void ChosenPrinter::onPrinterChanged() {
  tabs_.fitWidth();
  if (liveIn(window_.state()).followsPrinter) follow();
}

void ChosenPrinter::follow() {
  const auto printer = selection_.name();
  if (printer.empty()) return;
  if (printer == current_.name) return hideRows();
  reader_.drop();
  panel_.leavePrinter(current_.name);
  tabs_.forgetRows();
  window_.hideNotice();
  window_.giveUpPrint();
  current_ = {printer, {}, {}, {}, {}, {}, {}};
  window_.enter(DialogState::ready);
  enablePageSetup();
  if (!selection_.isPrinter()) return panel_.hide();
  window_.enter(DialogState::reading);
  panel_.showText(localized(kReadingText));
  reader_.read(destinationOf(printer), [this](Outcome outcome) { onDetails(std::move(outcome)); });
}

// The page setup has no effect on an existing document that is saved to a file.
void ChosenPrinter::enablePageSetup() {
  host::enablePageSetup(window_.dialog(), selection_.isPrinter() || events_.isToBeLaidOut());
}

void ChosenPrinter::onDetails(Outcome outcome) {
  if (outcome.result) {
    current_ = std::move(**outcome.result);
    const bool isFound = panel_.findBundle(current_.ppd.get());
    startFromStoredSettings();
    if (isFound) openPanel();
  } else {
    panel_.fail(*outcome.failure);
  }
  if (liveIn(window_.state()).followsPrinter) becomeReady();
}

// Starts from the settings that are saved and remembered for the printer, and from the command line's
// options.
void ChosenPrinter::startFromStoredSettings() {
  const auto asked = asSpelled(current_.ppd.get(), line_.options);
  const bool isFirst = first_.empty();
  if (isFirst) {
    first_ = current_.destination;
    remembered_ = recall({line_.server, first_}, report_);
  } else if (tabsOf_ != current_.name) {
    changeTabs(current_.name);
  }
  panel_.startFrom(current_.name, {current_.saved, remembered_.panel, panelOptionsOfPreset(), asked});
  if (isFirst) return selectFirst(asked);
  auto tabs = tabs_.leftAt(current_.name);
  if (!tabs.settings) {
    tabs = tabsOfNextPrinter(tabs_.settings(), remembered_.tabs, current_.saved, asked, current_.ppd.get());
    tabs_.show(tabs.settings);
  }
  showPageSetup(window_.dialog(), *tabs.setup);
  // GTK prefers the user's saved options to the settings that the tabs had before.
  const auto left = rowsShowing(tabs, presets_.options(asked));
  if (!presets_.showPages(asked) && !left.empty())
    static_cast<void>(tabs_.showOptions(left, current_.ppd.get()));
}

Options ChosenPrinter::panelOptionsOfPreset() {
  const auto family = panel_.family();
  if (!family) {
    presets_.close();
    return {};
  }
  presets_.open(*family, rememberedFile({line_.server, current_.destination}).stem());
  const auto preset = presets_.begin();
  return preset ? preset->panel : Options{};
}

void ChosenPrinter::becomeReady() {
  const bool printWaits = liveIn(window_.state()).printWaits;
  window_.enter(DialogState::ready);
  if (printWaits) events_.onReadyToPrint();
}

// The command line's options and the last job's settings apply to the first printer that is known.
void ChosenPrinter::selectFirst(const Options& asked) {
  auto* const ppd = current_.ppd.get();
  auto tabs = remembered_.tabs;
  if (!tabs.settings) {
    tabs.settings = Gtk::PrintSettings::create();
    applyOptions(current_.saved, ppd, tabs);
  }
  applyOptions(asked, ppd, tabs);
  suggest(*tabs.settings);
  tabsOf_ = current_.name;
  window_.proceed(DialogState::selecting);
  selection_.select(current_.name, tabs, [this] { onSelected(); });
}

void ChosenPrinter::onSelected() {
  const auto asked = asSpelled(current_.ppd.get(), line_.options);
  const auto selected = selection_.name();
  const bool isOther = !selected.empty() && selected != current_.name;
  // GTK prefers the user's saved options to its settings.
  if (!isOther && !asked.empty()) static_cast<void>(tabs_.showOptions(asked, current_.ppd.get()));
  tabs_.rememberRows(asked);
  tabs_.fitWidth();
  if (!isOther) presets_.showPages(asked);
  follow();
  if (!isOther) becomeReady();
}

void ChosenPrinter::openPanel() {
  const auto& name = current_.name;
  if (panel_.hasBundle()) {
    if (!current_.ppd) report_(withoutPpdText(name));
    if (panel_.open(current_.ppd.get(), current_.queueDefaults)) hideRows();
    return;
  }
  report_(name + " has no panel, since " + reasonForNoPanel(current_.ppd.get()));
  for (const auto& option : line_.options) {
    if (spelledAsIn(panel_.keywords(), option.keyword)) report_(leftOutText(name, option));
  }
  panel_.hide();
  hideRows();
}

// Hides GTK's rows for the panel's options; without a panel these options are not sent at all.
void ChosenPrinter::hideRows() {
  if (current_.ppd) tabs_.hideRows(*current_.ppd, panel_.keywords());
}

// A press of Print is given up, so that the user sees the notice before anything is printed.
void ChosenPrinter::onPanelFailure(const Failure& failure) {
  report_(failure.fact().english());
  window_.showNotice(localized(kUnavailableText) + '\n' + failureText(failure), [this] {
    current_ = {};
    follow();
  });
  hideRows();
  window_.giveUpPrint();
}

// The job gets these options where neither the panel nor GTK's tabs show them.
Options ChosenPrinter::optionsBesideTabs() {
  Options options;
  const auto asked = asSpelled(current_.ppd.get(), line_.options);
  for (const auto& some : {current_.saved, asked, presets_.options(asked)}) {
    for (const auto& option : some) setOption(options, option);
  }
  return options;
}

// The paper is left out if the job has it anyway.
Options ChosenPrinter::otherOptions() {
  tabs_.refuseWrongPages();
  auto options = optionsBesideTabs();
  if (paperAskedFor(current_.savedForAllUsers, current_.ppd.get())) {
    tabs_.addAllOptions(current_.ppd.get(), options);
  } else {
    tabs_.addOptions(selection_.printer(), current_.ppd.get(), options);
  }
  return withoutKeywords(std::move(options), panel_.keywords());
}

Options ChosenPrinter::optionsOfPages() {
  auto options = optionsBesideTabs();
  tabs_.addAllOptions(current_.ppd.get(), options);
  return withoutThoseOfOneJob(withoutKeywords(std::move(options), panel_.keywords()));
}

std::vector<IllegalValue> ChosenPrinter::showOnPages(const Options& options) {
  std::vector<IllegalValue> illegal;
  for (const auto& option : tabs_.showOptions(options, current_.ppd.get()))
    illegal.push_back({settingOf(*current_.ppd, option), {}});
  return illegal;
}

// A mistake in the tabs is reported when the job is printed.
std::optional<Options> ChosenPrinter::otherOptionsIfComplete() {
  try {
    return selection_.isPrinter() ? otherOptions() : Options{};
  } catch (const Failure&) {
    return std::nullopt;
  }
}

std::optional<Options> ChosenPrinter::optionsOfServer() {
  const auto asked = otherOptionsIfComplete();
  if (!asked) return std::nullopt;
  auto options = current_.serverDefaults;
  for (const auto& option : *asked) setOption(options, option);
  return options;
}

PrintRequest ChosenPrinter::makeRequest() {
  const auto& name = current_.name;
  PrintRequest request{line_.server,           destinationOf(name),    line_.title, otherOptions(),
                       {tabs_.settings(), {}}, panel_.useForAllJobs(), {}};
  if (panel_.hasFailed()) request.remembered.panel = recall({line_.server, request.printer}, report_).panel;
  if (!panel_.isOpen()) return request;
  for (const auto& option : panel_.options()) setOption(request.options, option);
  request.notKept = panel_.illegalDefaults();
  request.remembered.panel = withoutKeywords(panel_.options(), request.notKept);
  return request;
}

}  // namespace tandemtrim::host
