#include "host/dialog/gtk/own_tabs.hpp"

#include <algorithm>

#include "host/dialog/gtk/option_rows.hpp"
#include "host/dialog/gtk/page_setup_menus.hpp"
#include "host/dialog/gtk/row_values.hpp"
#include "host/dialog/gtk/shown_settings.hpp"
#include "host/dialog/settings/paper.hpp"

namespace tandemtrim::host {
namespace {

// In pixels: the width of a small screen, less the window's borders.
constexpr int kWidest = 760;

}  // namespace

TabSettings OwnTabs::settings() { return {shownSettings(dialog_), dialog_.get_page_setup()->copy()}; }

GtkEditable* OwnTabs::pagesEntry() {
  return GTK_EDITABLE(gtk_widget_get_template_child(GTK_WIDGET(dialog_.gobj()), GTK_TYPE_PRINT_UNIX_DIALOG,
                                                    "page_range_entry"));
}

void OwnTabs::refuseWrongPages() {
  auto* const entry = pagesEntry();
  const auto settings = shownSettings(dialog_);
  if (entry == nullptr || settings->get_print_pages() != Gtk::PrintPages::RANGES) return;
  host::refuseWrongPages(gtk_editable_get_text(entry));
  refuseNoPages(*settings);
}

// The default is read from this PPD, since GTK sets the default of its own copy to the paper that was shown
// when the user chose the printer.
void OwnTabs::addOptions(GtkPrinter* printer, ppd_file_t* ppd, Options& options) {
  auto paper = defaultPaper(ppd);
  if (const auto setup = Glib::wrap(gtk_printer_get_default_page_size(printer)); setup && !paper)
    paper = setup->get_paper_size();
  addTabOptions(settings(), ppd, paper ? paper->gobj() : nullptr, untouched_, options);
}

void OwnTabs::addAllOptions(ppd_file_t* ppd, Options& options) {
  addTabOptions(settings(), ppd, nullptr, untouched_, options);
}

Options OwnTabs::showOptions(const Options& options, ppd_file_t* ppd) {
  auto wanted = settings();
  applyOptions(options, ppd, wanted);
  // GTK would rewrite what was typed for the pages, even if it is wrong.
  auto* const pages = pagesEntry();
  const std::string typed = gtk_editable_get_text(pages);
  dialog_.set_settings(wanted.settings);
  if (typed != gtk_editable_get_text(pages)) gtk_editable_set_text(pages, typed.c_str());
  showPageSetup(dialog_, *wanted.setup);
  Options others;
  Options unshown;
  for (const auto& option : options) {
    const auto shows = showInRow(GTK_WIDGET(dialog_.gobj()), ppd, option);
    if (shows == RowShows::anotherValue) others.push_back(option);
    if (shows == RowShows::noRow) unshown.push_back(option);
  }
  for (const auto& row : rowsShowing(settings(), unshown)) setOption(untouched_, row);
  return others;
}

TabSettings OwnTabs::leftAt(const std::string& printer) const {
  const auto left = left_.find(printer);
  return left == left_.end() ? TabSettings{} : left->second;
}

void OwnTabs::hideRows(ppd_file_t& ppd, const std::vector<std::string>& keywords) {
  hideOptionRows(GTK_WIDGET(dialog_.gobj()), ppd, keywords);
}

void OwnTabs::fitWidth() {
  shortenMenuValues(GTK_WIDGET(dialog_.gobj()));
  auto& content = *dialog_.get_content_area();
  content.set_size_request(-1, -1);
  int minimum = 0;
  int natural = 0;
  int baseline = 0;
  content.measure(Gtk::Orientation::HORIZONTAL, -1, minimum, natural, baseline, baseline);
  content.set_size_request(std::min(natural, kWidest), -1);
}

}  // namespace tandemtrim::host
