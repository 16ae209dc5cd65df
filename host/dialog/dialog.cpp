#include "host/dialog/dialog.hpp"

#include <algorithm>
#include <utility>

#include <gtk/gtkunixprint.h>
#include <gtkmm/scrolledwindow.h>

#include "host/bundle_search.hpp"
#include "host/dialog/dialog_options.hpp"
#include "host/dialog/option_rows.hpp"
#include "host/dialog/remembered.hpp"
#include "host/dialog/texts.hpp"
#include "host/family.hpp"
#include "host/job_settings.hpp"
#include "host/option_syntax.hpp"
#include "host/ppd.hpp"

namespace tandemtrim::host {
namespace {

constexpr unsigned kSelectAgain = 50;  // milliseconds
constexpr int kSelections = 100;
constexpr int kMargin = 18;

bool isOfPanel(const std::string& keyword) {
  return std::ranges::any_of(kPanelKeywords, [&](const char* own) { return isSameKeyword(own, keyword); });
}

// GTK's own, which holds all pages of the dialog.
GtkNotebook* notebookOf(Gtk::Widget& page) {
  return GTK_NOTEBOOK(gtk_widget_get_ancestor(page.gobj(), GTK_TYPE_NOTEBOOK));
}

}  // namespace

Dialog::Dialog(const CommandLine& line, Note note)
    : line_(line),
      note_(std::move(note)),
      documents_(std::make_shared<std::vector<Document>>(openDocuments(line.files))),
      page_(Gtk::make_managed<PanelPage>()),
      pageTitle_(Gtk::make_managed<Gtk::Label>("Tandem Trim")),
      summary_(Gtk::make_managed<Gtk::Grid>()),
      notice_(Gtk::make_managed<Gtk::Label>()),
      dialog_(std::make_unique<Gtk::PrintUnixDialog>(g_dgettext("gtk40", "Print"))) {
  for (auto& document : *documents_) document.keep();
  // Escape and the window's own button close it; its pages are still in use then.
  dialog_->set_hide_on_close();
  dialog_->set_manual_capabilities(Gtk::PrintCapabilities::PAGE_SET);
  dialog_->set_embed_page_setup();
  dialog_->add_custom_tab(*page_, *pageTitle_);
  summary_->set_margin(kMargin);
  summary_->set_row_spacing(6);
  summary_->set_column_spacing(12);
  dialog_->add_custom_tab(*summary_, *Gtk::make_managed<Gtk::Label>(localized(kSummaryText)));
  summary_->set_visible(false);
  // Until a printer is chosen GTK shows the tabs of all its pages; with these in one row, the dialog would
  // stay as wide as they.
  gtk_notebook_set_scrollable(notebookOf(*page_), TRUE);
  notice_->set_wrap();
  notice_->set_xalign(0);
  notice_->set_margin(kMargin);
  notice_->set_visible(false);
  dialog_->get_content_area()->append(*notice_);

  page_->signal_map().connect(sigc::mem_fun(*this, &Dialog::onTabShown));
  page_->signal_unmap().connect(sigc::mem_fun(*this, &Dialog::onTabLeft));
  page_->correct.signal_clicked().connect(sigc::mem_fun(*this, &Dialog::correct));
  page_->help.signal_clicked().connect(sigc::mem_fun(*this, &Dialog::showHelp));
  summary_->signal_map().connect(sigc::mem_fun(*this, &Dialog::showSummary));
  dialog_->property_selected_printer().signal_changed().connect(
      sigc::mem_fun(*this, &Dialog::onPrinterChanged));
  dialog_->signal_response().connect(sigc::mem_fun(*this, &Dialog::onResponse));
}

Dialog::~Dialog() {
  selecting_.disconnect();
  closePanel();
}

std::optional<SentJob> Dialog::run() {
  page_->showText(localized(kReadingText));
  dialog_->set_visible();
  begin();
  loop_->run();
  return sent_;
}

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
  const auto server = line_.server;
  const auto printer = line_.printer;
  inBackground<std::shared_ptr<Details>>(
      alive_, [server, printer] { return detailsOf(server, printer); },
      [this](auto outcome) {
        started_ = true;
        if (!outcome.result) {
          note_(outcome.failure->what());
          page_->showText(failureText(*outcome.failure));
          onPrinterChanged();
          return;
        }
        const auto& found = (*outcome.result)->printer;
        const auto remembered = recall({line_.server, found.name}, note_);
        startFrom(found.saved);
        startFrom(remembered.panel);
        startFrom(line_.options);
        auto* const ppd = (*outcome.result)->ppd.get();
        auto pages = remembered.pages;
        if (!pages.settings) {
          pages.settings = Gtk::PrintSettings::create();
          showOptions(found.saved, ppd, pages);
        }
        showOptions(line_.options, ppd, pages);
        const auto settings = pages.settings;
        settings->set_printer(found.name);
        dialog_->set_settings(settings);
        current_ = found.name;
        reading_ = true;
        onDetails(found.name, std::move(outcome));
        select(current_, pages);
      });
}

// The panel takes those of its own keywords among them.
void Dialog::startFrom(const Options& options) {
  for (const auto& option : options) {
    const auto* const own = std::ranges::find_if(
        kPanelKeywords, [&](const char* known) { return isSameKeyword(known, option.keyword); });
    settings_.PMPrintSettingsSetValue(own == kPanelKeywords.end() ? option.keyword : *own, option.value,
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
  const auto server = line_.server;
  inBackground<std::shared_ptr<Details>>(
      alive_, [server, printer] { return detailsOf(server, printer); },
      [this, printer](auto outcome) { onDetails(printer, std::move(outcome)); });
}

void Dialog::onDetails(const std::string& printer, Outcome<std::shared_ptr<Details>> outcome) {
  if (printer != current_) return;
  reading_ = false;
  if (!outcome.result) return refuseToShow(*outcome.failure);
  ppd_ = std::move((*outcome.result)->ppd);
  if (guarded([&] { openPanel(printer); })) printIfAsked();
}

void Dialog::openPanel(const std::string& printer) {
  const auto bundles = ppd_ ? dialogExtensions(*ppd_) : std::vector<std::string>{kDefaultBundle};
  if (bundles.empty()) {
    note_(printer + " has no panel, since its PPD names none");
    for (const auto& option : line_.options) {
      if (isOfPanel(option.keyword)) note_(printer + " has no panel; " + optionText(option) + " is left out");
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

// GTK's own rows for what the panel sets; without a panel these options are not sent at all.
void Dialog::hideRows() {
  if (!ppd_) return;
  const std::vector<std::string> known(kPanelKeywords.begin(), kPanelKeywords.end());
  hideOptionRows(GTK_WIDGET(dialog_->gobj()), *ppd_, panel_ ? panel_->keywords() : known);
}

void Dialog::closePanel() {
  page_->removeView();
  summary_->set_visible(false);
  panel_.reset();
}

void Dialog::refuseToShow(const Failure& failure) {
  closePanel();
  page_->set_visible(false);
  note_(failure.what());
  notice_->set_text(localized(kUnavailableText) + '\n' + failureText(failure));
  notice_->set_visible();
  hideRows();
  // The person is to see that before anything is printed.
  if (std::exchange(printWhenRead_, false)) allowPrinting(true);
}

// The paper is chosen on another page, so that it is told whenever this one comes up.
void Dialog::comeUp() {
  const auto paper = dialog_->get_page_setup()->get_paper_size();
  panel_->setPaperSize(paper.get_width(Gtk::Unit::MM), paper.get_height(Gtk::Unit::MM));
  panel_->willShow();
}

void Dialog::onTabShown() {
  if (panel_) guarded([&] { comeUp(); });
}

// What the person did is saved, since coming up again shows what is stored.
void Dialog::onTabLeft() {
  if (!panel_ || !dialog_->get_visible()) return;
  guarded([&] {
    panel_->save();
    if (panel_->shouldHide()) return;
    auto* const notebook = notebookOf(*page_);
    gtk_notebook_set_current_page(notebook, gtk_notebook_page_num(notebook, GTK_WIDGET(page_->gobj())));
  });
}

// Building a summary puts what is stored back into the controls, so that what they show is saved first.
void Dialog::showSummary() {
  while (auto* const row = summary_->get_first_child()) summary_->remove(*row);
  if (!panel_) return;
  guarded([&] {
    panel_->save();
    int number = 0;
    for (const auto& [title, value] : panel_->summary()) {
      int column = 0;
      for (const auto& shown : {title, value}) {
        auto* const label = Gtk::make_managed<Gtk::Label>(shown);
        label->set_xalign(0);
        label->set_selectable(column == 1);
        summary_->attach(*label, column++, number);
      }
      ++number;
    }
  });
}

void Dialog::warn() {
  if (panel_) guarded([&] { page_->warnOf(panel_->illegalValues()); });
}

void Dialog::correct() {
  if (!panel_) return;
  guarded([&] {
    panel_->save();
    for (const auto& value : panel_->illegalValues())
      settings_.PMPrintSettingsSetValue(value.keyword, value.suggested, false);
    panel_->restore();
  });
  warn();
}

void Dialog::showHelp() {
  ask(helpText(), Gtk::MessageType::INFO, {{localized(kCloseText), Gtk::ResponseType::CLOSE}}, [](int) {});
}

// What the order takes of the command line: options that neither the panel nor the dialog's pages show.
Order Dialog::order() {
  Order order{line_.server,
              current_,
              line_.title.value_or(documents_->front().name()),
              documents_,
              {},
              {shownPages(*dialog_), {}},
              page_->useForAllJobs.get_active()};
  for (const auto& option : line_.options) setOption(order.options, option);
  auto* const chosen = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  const auto usual = Glib::wrap(gtk_printer_get_default_page_size(chosen));
  takeOptions(order.remembered.pages, ppd_.get(),
              usual ? gtk_page_setup_get_paper_size(usual->gobj()) : nullptr, order.options);
  std::erase_if(order.options, [](const Option& option) { return isOfPanel(option.keyword); });
  if (!panel_) return order;
  for (const auto& keyword : panel_->keywords()) {
    std::optional<std::string> value;
    settings_.PMPrintSettingsGetValue(keyword, value);
    if (value) order.remembered.panel.push_back({keyword, *value});
  }
  for (const auto& option : order.remembered.panel) setOption(order.options, option);
  return order;
}

}  // namespace tandemtrim::host
