#include "host/dialog/chosen_printer.hpp"

#include <utility>

#include "host/cups/ppd.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/panel/job_settings.hpp"

namespace tandemtrim::host {

ChosenPrinter::ChosenPrinter(const CommandLine& line, const Report& report, DialogWindow& window,
                             Events events)
    : line_(line),
      report_(report),
      window_(window),
      events_(std::move(events)),
      selection_(window.dialog()),
      tabs_(window.dialog()),
      panel_(window.dialog(), line.plugin, report,
             {[this](const Failure& failure) { onPanelFailure(failure); }, events_.onHelp}),
      reader_(line.server) {
  window.dialog().property_selected_printer().signal_changed().connect(
      sigc::mem_fun(*this, &ChosenPrinter::onPrinterChanged));
}

void ChosenPrinter::start() {
  panel_.showText(localized(kReadingText));
  reader_.read(line_.printer, [this](Outcome outcome) { onFirstDetails(std::move(outcome)); });
}

void ChosenPrinter::onFirstDetails(Outcome outcome) {
  if (outcome.result) return onDetails(std::move(outcome));
  report_(outcome.failure->what());
  panel_.showText(failureText(*outcome.failure));
  window_.giveUpPrint();
  window_.enter(DialogState::ready);
  onPrinterChanged();
  window_.showNotice(failureText(*outcome.failure));
}

void ChosenPrinter::onPrinterChanged() {
  tabs_.fitWidth();
  if (liveIn(window_.state()).followsPrinter) follow();
}

// Edits in the panel go along to the next printer.
void ChosenPrinter::follow() {
  const auto printer = selection_.name();
  if (printer.empty()) return;
  if (printer == current_.name) return hideRows();
  reader_.drop();
  panel_.leavePrinter();
  tabs_.forgetRows();
  window_.hideNotice();
  window_.giveUpPrint();
  current_ = {printer, {}, {}, {}};
  window_.enter(DialogState::ready);
  if (!selection_.isPrinter()) return panel_.hide();
  window_.enter(DialogState::reading);
  panel_.showText(localized(kReadingText));
  reader_.read(printer, [this](Outcome outcome) { onDetails(std::move(outcome)); });
}

void ChosenPrinter::onDetails(Outcome outcome) {
  if (outcome.result) {
    current_ = std::move(**outcome.result);
    const bool isFound = panel_.findBundle(current_.ppd.get());
    if (first_.empty()) selectFirst();
    if (isFound) openPanel();
  } else {
    panel_.fail(*outcome.failure);
  }
  if (liveIn(window_.state()).followsPrinter) becomeReady();
}

void ChosenPrinter::becomeReady() {
  const bool printWaits = liveIn(window_.state()).printWaits;
  window_.enter(DialogState::ready);
  if (printWaits) events_.onReadyToPrint();
}

// The first printer that is known is the one that the command line and the last job are about.
void ChosenPrinter::selectFirst() {
  first_ = current_.name;
  auto* const ppd = current_.ppd.get();
  auto [tabs, panel] = recall({line_.server, first_}, report_);
  const auto asked = asSpelled(ppd, line_.options);
  for (const auto& options : {current_.saved, panel, asked}) panel_.startFrom(options);
  if (!tabs.settings) {
    tabs.settings = Gtk::PrintSettings::create();
    applyOptions(current_.saved, ppd, tabs);
  }
  applyOptions(asked, ppd, tabs);
  window_.proceed(DialogState::selecting);
  selection_.select(first_, tabs, [this] { onSelected(); });
}

void ChosenPrinter::onSelected() {
  tabs_.rememberRows(asSpelled(current_.ppd.get(), line_.options));
  tabs_.fitWidth();
  const auto selected = selection_.name();
  const bool isOther = !selected.empty() && selected != current_.name;
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

// GTK's rows for what the panel shows; without a panel these options are not sent at all.
void ChosenPrinter::hideRows() {
  if (current_.ppd) tabs_.hideRows(*current_.ppd, panel_.keywords());
}

// The user is to see the notice before anything is printed.
void ChosenPrinter::onPanelFailure(const Failure& failure) {
  report_(failure.what());
  window_.showNotice(localized(kUnavailableText) + '\n' + failureText(failure));
  hideRows();
  window_.giveUpPrint();
}

// Saved options and those of the command line count where neither the panel nor GTK's tabs show them.
PrintRequest ChosenPrinter::makeRequest() {
  const auto& name = current_.name;
  PrintRequest request{line_.server,           name, line_.title, {}, {tabs_.settings(), {}},
                       panel_.useForAllJobs(), {}};
  for (const auto& options : {current_.saved, asSpelled(current_.ppd.get(), line_.options)}) {
    for (const auto& option : options) setOption(request.options, option);
  }
  tabs_.addOptions(selection_.printer(), current_.ppd.get(), request.options);
  request.options = withoutKeywords(std::move(request.options), panel_.keywords());
  if (name == first_ && line_.printer && line_.printer->starts_with(name + '/'))
    request.printer = *line_.printer;
  if (panel_.hasFailed()) request.remembered.panel = recall({line_.server, name}, report_).panel;
  if (!panel_.isOpen()) return request;
  for (const auto& option : panel_.options()) setOption(request.options, option);
  request.notKept = panel_.illegalDefaults();
  request.remembered.panel = withoutKeywords(panel_.options(), request.notKept);
  return request;
}

}  // namespace tandemtrim::host
