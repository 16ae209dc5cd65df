// What the dialog does when a printer is chosen: it reads the printer's details and opens its panel.

#include <utility>

#include <gtk/gtkunixprint.h>

#include "host/bundle_search.hpp"
#include "host/dialog/dialog.hpp"
#include "host/dialog/texts.hpp"
#include "host/family.hpp"
#include "host/job_settings.hpp"
#include "host/plain_text.hpp"
#include "host/ppd.hpp"

namespace tandemtrim::host {
namespace {

constexpr unsigned kSelectAgain = 50;  // milliseconds
constexpr int kSelections = 100;

}  // namespace

std::shared_ptr<Dialog::Details> Dialog::detailsOf(const std::optional<std::string>& server,
                                                   const std::optional<std::string>& printer) {
  const Connection connection(server);
  auto details = std::make_shared<Details>();
  details->printer = findPrinter(connection, printer);
  details->ppd = queuePpd(connection, details->printer);
  // GTK's rows have the titles that the PPD gives in the person's language.
  if (details->ppd) ppdLocalize(details->ppd.get());
  return details;
}

// The printer that the command line names, or the person's default one.
void Dialog::begin() {
  inBackground<std::shared_ptr<Details>>(
      alive_, [server = line_.server, printer = line_.printer] { return detailsOf(server, printer); },
      [this, number = ++reading_](auto outcome) {
        started_ = true;
        if (outcome.result) {
          current_ = (*outcome.result)->printer.name;
          return onDetails(number, std::move(outcome));
        }
        isReading_ = false;
        note_(outcome.failure->what());
        page_->showText(failureText(*outcome.failure));
        onPrinterChanged();
        showNotice(failureText(*outcome.failure));
      });
}

// The first printer of which anything is known is the one that the command line and the last job are about.
void Dialog::start() {
  first_ = current_;
  const auto remembered = recall({line_.server, current_}, note_);
  const auto spelled = asSpelledByPrinter(line_.options);
  for (const auto& options : {saved_, remembered.panel, spelled}) startFrom(options);
  auto pages = remembered.pages;
  if (!pages.settings) {
    pages.settings = Gtk::PrintSettings::create();
    showOptions(saved_, ppd_.get(), pages);
  }
  showOptions(spelled, ppd_.get(), pages);
  pages.settings->set_printer(current_);
  dialog_->set_settings(pages.settings);
  select(current_, pages);
}

// Letter case does not tell keywords apart, but GTK's rows go by the PPD's own spelling.
Options Dialog::asSpelledByPrinter(Options options) const {
  for (auto& option : options) {
    if (ppd_) option.keyword = keywordAsSpelled(*ppd_, option.keyword);
  }
  return options;
}

// The panel takes those of its own keywords among them.
void Dialog::startFrom(const Options& options) {
  for (const auto& option : options) {
    settings_.PMPrintSettingsSetValue(keywordOfPanel(option.keyword).value_or(option.keyword), option.value,
                                      false);
  }
}

std::string Dialog::selectedPrinter() const {
  auto* const printer = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  return printer == nullptr ? "" : gtk_printer_get_name(printer);
}

// GTK forgets the printer of its settings unless that one is listed first, so it is asked again until it is
// selected.
void Dialog::select(const std::string& printer, const Pages& pages) {
  wanted_ = printer;
  selecting_ = Glib::signal_timeout().connect(
      [this, pages, tries = 0]() mutable {
        if (selectedPrinter() == *wanted_ || ++tries > kSelections) {
          // Copies and paper count for a selected printer only.
          dialog_->set_settings(pages.settings);
          if (pages.setup) showPageSetup(*dialog_, *pages.setup);
          untouched_ = shownRows(shownPages(*dialog_), asSpelledByPrinter(line_.options));
          wanted_.reset();
          onPrinterChanged();
          return false;
        }
        dialog_->set_settings(pages.settings);
        return true;
      },
      kSelectAgain);
}

void Dialog::onPrinterChanged() {
  fitWidth();
  const auto printer = selectedPrinter();
  if (!started_ || wanted_ || printer.empty()) return;
  if (printer == current_) {
    hideRows();
    return printIfAsked();
  }
  // What the person did at the panel goes along to the next printer.
  if (panel_) guarded([&] { panel_->save(); });
  forgetPrinter();
  current_ = printer;
  if (gtk_printer_is_virtual(gtk_print_unix_dialog_get_selected_printer(dialog_->gobj())) != FALSE) {
    page_->set_visible(false);
    return;
  }
  readDetails(printer);
}

void Dialog::forgetPrinter() {
  ++reading_;
  closePanel();
  ppd_.reset();
  saved_.clear();
  untouched_.clear();
  notice_->set_visible(false);
  panelFailed_ = false;
  isReading_ = false;
  if (!std::exchange(printWhenRead_, false)) return;
  auto* const chosen = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  allowPrinting(true);
  if (gtk_printer_is_accepting_jobs(chosen) == FALSE)
    dialog_->set_response_sensitive(Gtk::ResponseType::OK, false);
}

void Dialog::readDetails(const std::string& printer) {
  isReading_ = true;
  page_->showText(localized(kReadingText));
  page_->set_visible();
  inBackground<std::shared_ptr<Details>>(
      alive_, [server = line_.server, printer] { return detailsOf(server, printer); },
      [this, number = ++reading_](auto outcome) { onDetails(number, std::move(outcome)); });
}

void Dialog::onDetails(int reading, Outcome<std::shared_ptr<Details>> outcome) {
  // Another printer was chosen meanwhile, or this one once more.
  if (reading != reading_) return;
  isReading_ = false;
  if (!outcome.result) return refuseToShow(*outcome.failure);
  auto& details = **outcome.result;
  ppd_ = std::move(details.ppd);
  saved_ = asSpelledByPrinter(std::move(details.printer.saved));
  if (first_.empty()) start();
  if (guarded([&] { openPanel(current_); })) printIfAsked();
}

void Dialog::openPanel(const std::string& printer) {
  const auto bundles = ppd_ ? dialogExtensions(*ppd_) : std::vector<std::string>{kDefaultBundle};
  if (bundles.empty()) {
    note_(printer + " has no panel, since its PPD names none");
    for (const auto& option : line_.options) {
      if (keywordOfPanel(option.keyword))
        note_(printer + " has no panel; " + shortText(optionText(option)) + " is left out");
    }
    page_->set_visible(false);
    return hideRows();
  }
  if (!ppd_) note_(withoutPpdText(printer));
  const auto bundle = findBundle(line_.plugin, bundles);
  if (!bundle) throw PluginFailure("the plug-in " + bundles.front() + " is not installed");
  panel_ = std::make_unique<OpenPanel>(bundle->string(), settings_, ppd_.get(), note_);
  pageTitle_->set_text(panel_->title());
  page_->showView(panel_->view());
  page_->help.set_visible(panel_->shouldShowHelp());
  if (page_->get_mapped()) comeUp();
  page_->set_visible();
  summary_->set_visible();
  hideRows();
  warn();
}

}  // namespace tandemtrim::host
