#include "host/dialog/dialog.hpp"

#include <algorithm>
#include <utility>

#include <gtk/gtkunixprint.h>
#include <gtkmm/scrolledwindow.h>

#include "host/dialog/settings/option_rows.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/panel/bundle_search.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kMargin = 18;
// The width of a small screen, less what surrounds the window.
constexpr int kWidest = 760;

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
      pageTitle_(Gtk::make_managed<Gtk::Label>(localized(kPageTitleText))),
      summary_(Gtk::make_managed<Gtk::Grid>()),
      notice_(Gtk::make_managed<Gtk::Label>()),
      progress_(Gtk::make_managed<Gtk::Label>()),
      dialog_(std::make_unique<Gtk::PrintUnixDialog>(g_dgettext("gtk40", "Print"))) {
  for (auto& document : *documents_) document.keep();
  // Escape and the window's own button close it; its pages are still in use then.
  dialog_->set_hide_on_close();
  dialog_->set_manual_capabilities(Gtk::PrintCapabilities::PAGE_SET);
  dialog_->set_embed_page_setup();
  summary_->set_margin(kMargin);
  summary_->set_row_spacing(6);
  summary_->set_column_spacing(12);
  dialog_->add_custom_tab(*summary_, *Gtk::make_managed<Gtk::Label>(localized(kSummaryText)));
  summary_->set_visible(false);
  // GTK puts what comes later first.
  dialog_->add_custom_tab(*page_, *pageTitle_);
  // Until a printer is chosen GTK shows the tabs of all its pages; with these in one row, the dialog would
  // stay as wide as they.
  gtk_notebook_set_scrollable(notebookOf(*page_), TRUE);
  for (auto* label : {notice_, progress_}) {
    label->set_wrap();
    label->set_xalign(0);
    label->set_margin(kMargin);
    label->set_visible(false);
    dialog_->get_content_area()->append(*label);
  }

  page_->signal_map().connect(sigc::mem_fun(*this, &Dialog::onTabShown));
  page_->signal_unmap().connect(sigc::mem_fun(*this, &Dialog::onTabLeft));
  page_->signalCorrect.connect(sigc::mem_fun(*this, &Dialog::correct));
  page_->signalEdited.connect(sigc::mem_fun(*this, &Dialog::onEdited));
  page_->help.signal_clicked().connect(sigc::mem_fun(*this, &Dialog::showHelp));
  summary_->signal_map().connect(sigc::mem_fun(*this, &Dialog::showSummary));
  dialog_->property_selected_printer().signal_changed().connect(
      sigc::mem_fun(*this, &Dialog::onPrinterChanged));
  dialog_->get_widget_for_response(Gtk::ResponseType::OK)
      ->property_sensitive()
      .signal_changed()
      .connect(sigc::mem_fun(*this, &Dialog::onPrintLive));
  dialog_->signal_response().connect(sigc::mem_fun(*this, &Dialog::onResponse));
}

Dialog::~Dialog() {
  selecting_.disconnect();
  g_clear_weak_pointer(&focused_);
  // GTK's notebook would pass the focus on to a page of a window that is gone.
  dialog_->unset_focus();
  closePanel();
}

std::optional<SentJob> Dialog::run() {
  page_->showText(localized(kReadingText));
  dialog_->set_visible();
  begin();
  loop_->run();
  return sent_;
}

// GTK's own rows for what the panel sets; without a panel these options are not sent at all.
void Dialog::hideRows() {
  if (ppd_) hideOptionRows(GTK_WIDGET(dialog_->gobj()), *ppd_, panelKeywords());
}

// GTK makes new rows for each printer. The dialog is as wide as they like, up to a limit.
void Dialog::fitWidth() {
  shortenMenuValues(GTK_WIDGET(dialog_->gobj()));
  auto& content = *dialog_->get_content_area();
  content.set_size_request(-1, -1);
  int least = 0;
  int liked = 0;
  int baseline = 0;
  content.measure(Gtk::Orientation::HORIZONTAL, -1, least, liked, baseline, baseline);
  content.set_size_request(std::min(liked, kWidest), -1);
}

void Dialog::closePanel() {
  page_->removeView();
  summary_->set_visible(false);
  panel_.reset();
}

void Dialog::refuseToShow(const Failure& failure) {
  closePanel();
  page_->set_visible(false);
  panelFailed_ = true;
  note_(failure.what());
  showNotice(localized(kUnavailableText) + '\n' + failureText(failure));
  hideRows();
  // The person is to see that before anything is printed.
  if (std::exchange(printWhenRead_, false)) allowPrinting(true);
}

void Dialog::showNotice(const std::string& text) {
  notice_->set_text(text);
  notice_->set_visible();
}

// The view is loaded when the page first shows. Its paper is chosen on another page, so it learns the size
// each time.
void Dialog::comeUp() {
  auto& view = panel_->view();
  if (view.toolkitView() == nullptr) throw unusable(bundle_->path, "its view could not be loaded");
  page_->showView(GTK_WIDGET(view.toolkitView()));
  const auto paper = dialog_->get_page_setup()->get_paper_size();
  callPlugin(bundle_->path, "setPaperSize",
             [&] { view.setPaperSize(paper.get_width(Gtk::Unit::MM), paper.get_height(Gtk::Unit::MM)); });
  panel_->willShow();
  warn();
}

void Dialog::onTabShown() {
  if (panel_) guarded([&] { comeUp(); });
}

// What the person did is saved, since coming up again shows what is stored.
void Dialog::onTabLeft() {
  if (!panel_ || !dialog_->get_visible()) return;
  guarded([&] {
    panel_->save();
    warn();
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

// What the warning names may be what the person has just put right.
void Dialog::onEdited() {
  if (!panel_) return;
  guarded([&] { panel_->save(); });
  warn();
}

void Dialog::warn() {
  if (panel_) guarded([&] { page_->warnOf(illegalValues(panel_->settings())); });
}

void Dialog::correct() {
  if (!panel_) return;
  guarded([&] {
    panel_->save();
    for (const auto& [setting, suggested] : illegalValues(panel_->settings()))
      settings_.PMPrintSettingsSetValue(setting.keyword, suggested, false);
    panel_->restore();
  });
  warn();
}

void Dialog::showHelp() {
  if (!bundle_) return;
  ask(helpText(*bundle_), Gtk::MessageType::INFO, {{localized(kCloseText), Gtk::ResponseType::CLOSE}},
      [](int) {});
}

}  // namespace tandemtrim::host
