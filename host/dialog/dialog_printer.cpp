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
  return details;
}

// The printer that the command line names, or the person's default one.
void Dialog::begin() {
  inBackground<std::shared_ptr<Details>>(
      alive_, [server = line_.server, printer = line_.printer] { return detailsOf(server, printer); },
      [this](auto outcome) {
        started_ = true;
        if (outcome.result) return startAt(std::move(outcome));
        note_(outcome.failure->what());
        page_->showText(failureText(*outcome.failure));
        onPrinterChanged();
      });
}

void Dialog::startAt(Outcome<std::shared_ptr<Details>> outcome) {
  const auto& found = (*outcome.result)->printer;
  auto* const ppd = (*outcome.result)->ppd.get();
  const auto remembered = recall({line_.server, found.name}, note_);
  for (const auto& options : {found.saved, remembered.panel, line_.options}) startFrom(options);
  auto pages = remembered.pages;
  if (!pages.settings) {
    pages.settings = Gtk::PrintSettings::create();
    showOptions(found.saved, ppd, pages);
  }
  showOptions(line_.options, ppd, pages);
  pages.settings->set_printer(found.name);
  dialog_->set_settings(pages.settings);
  current_ = found.name;
  reading_ = true;
  onDetails(current_, std::move(outcome));
  select(current_, pages);
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
  closePanel();
  ppd_.reset();
  saved_.clear();
  notice_->set_visible(false);
  reading_ = false;
  if (!std::exchange(printWhenRead_, false)) return;
  auto* const chosen = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  allowPrinting(gtk_printer_is_accepting_jobs(chosen) != FALSE);
}

void Dialog::readDetails(const std::string& printer) {
  reading_ = true;
  page_->showText(localized(kReadingText));
  page_->set_visible();
  inBackground<std::shared_ptr<Details>>(
      alive_, [server = line_.server, printer] { return detailsOf(server, printer); },
      [this, printer](auto outcome) { onDetails(printer, std::move(outcome)); });
}

void Dialog::onDetails(const std::string& printer, Outcome<std::shared_ptr<Details>> outcome) {
  if (printer != current_) return;
  reading_ = false;
  if (!outcome.result) return refuseToShow(*outcome.failure);
  ppd_ = std::move((*outcome.result)->ppd);
  saved_ = std::move((*outcome.result)->printer.saved);
  if (guarded([&] { openPanel(printer); })) printIfAsked();
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
  page_->warnOf(panel_->illegalValues());
}

}  // namespace tandemtrim::host
