// What the dialog does when a printer is chosen: it reads the printer's details and opens its panel.

#include <utility>

#include <gtk/gtkunixprint.h>

#include "host/cups/ppd.hpp"
#include "host/dialog/dialog.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/panel/job_settings.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr unsigned kSelectAgain = 50;  // milliseconds
constexpr int kSelections = 100;

// The printer that is selected in GTK's list, which may not have read its details yet, or null.
GtkPrinter* selectedInList(GtkWidget* widget) {
  if (GTK_IS_COLUMN_VIEW(widget)) {
    auto* const list = GTK_SINGLE_SELECTION(gtk_column_view_get_model(GTK_COLUMN_VIEW(widget)));
    return static_cast<GtkPrinter*>(gtk_single_selection_get_selected_item(list));
  }
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (auto* const printer = selectedInList(child)) return printer;
  }
  return nullptr;
}

std::string nameInList(Gtk::PrintUnixDialog& dialog) {
  auto* const printer = selectedInList(GTK_WIDGET(dialog.gobj()));
  return printer == nullptr ? "" : gtk_printer_get_name(printer);
}

// The printer that somebody selected instead of the wanted one. By itself GTK selects none but the default
// one.
std::optional<std::string> selectedInstead(Gtk::PrintUnixDialog& dialog, const std::string& wanted,
                                           bool wasWantedSelected) {
  auto name = nameInList(dialog);
  if (name.empty() || name == wanted) return std::nullopt;
  if (!wasWantedSelected && gtk_printer_is_default(selectedInList(GTK_WIDGET(dialog.gobj()))) != FALSE)
    return std::nullopt;
  return name;
}

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
  select(current_, pages);
}

// Letter case does not tell keywords apart, but GTK's rows go by the PPD's own spelling.
Options Dialog::asSpelledByPrinter(Options options) const {
  for (auto& option : options) {
    if (ppd_) option.keyword = keywordAsSpelled(*ppd_, option.keyword);
  }
  return options;
}

// The panel takes its own keywords from the settings, in its own spelling.
void Dialog::startFrom(const Options& options) {
  const auto keywords = panelKeywords();
  for (const auto& [keyword, value] : options)
    settings_.PMPrintSettingsSetValue(spelledAsIn(keywords, keyword).value_or(keyword), value, false);
}

std::string Dialog::selectedPrinter() const {
  auto* const printer = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  return printer == nullptr ? "" : gtk_printer_get_name(printer);
}

// GTK forgets the printer of its settings unless that one is listed first, so it is asked again until it is
// selected. A printer that somebody selects meanwhile stays selected.
void Dialog::select(const std::string& printer, const Pages& pages) {
  wanted_ = printer;
  auto ask = [this, pages, wasListed = false]() mutable {
    const auto instead = selectedInstead(*dialog_, *wanted_, wasListed);
    const bool isSelected = selectedPrinter() == *wanted_;
    pages.settings->set_printer(instead.value_or(*wanted_));
    // Copies and paper count for a selected printer only.
    dialog_->set_settings(pages.settings);
    wasListed = nameInList(*dialog_) == *wanted_;
    return instead || isSelected;
  };
  ask();
  selecting_ = Glib::signal_timeout().connect(
      [this, pages, ask, tries = 0]() mutable {
        if (!ask() && ++tries <= kSelections) return true;
        if (pages.setup) showPageSetup(*dialog_, *pages.setup);
        untouched_ = shownRows(shownPages(*dialog_), asSpelledByPrinter(line_.options));
        wanted_.reset();
        onPrinterChanged();
        return false;
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
  bundle_.reset();
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
  const bool found = guarded([&] { findBundle(); });
  if (first_.empty()) start();
  if (found && guarded([&] { openPanel(); })) printIfAsked();
}

void Dialog::findBundle() {
  const auto path = bundleOfPrinter(line_.plugin, ppd_.get());
  if (path) bundle_ = openBundle(path->string(), note_);
}

void Dialog::openPanel() {
  if (!bundle_) {
    note_(current_ + " has no panel, since " + reasonForNoPanel(ppd_.get()));
    for (const auto& option : line_.options) {
      if (spelledAsIn(panelKeywords(), option.keyword))
        note_(current_ + " has no panel; " + shortText(optionText(option)) + " is left out");
    }
    page_->set_visible(false);
    return hideRows();
  }
  if (!ppd_) note_(withoutPpdText(current_));
  panel_ = std::make_unique<PanelSession>(*bundle_, kGtkModule, settings_, ppd_.get());
  pageTitle_->set_text(panel_->title());
  page_->help.set_visible(panel_->shouldShowHelp());
  page_->set_visible();
  summary_->set_visible();
  if (page_->get_mapped()) comeUp();
  hideRows();
  warn();
}

// The option keywords that no page of GTK's shows or sends: those of the printer's panel or, where it has
// none, of all panels that are installed.
std::vector<std::string> Dialog::panelKeywords() const {
  if (panel_) return panel_->keywords();
  return bundle_ ? bundle_->info.optionKeywords() : keywordsOfPanels(line_.plugin);
}

}  // namespace tandemtrim::host
