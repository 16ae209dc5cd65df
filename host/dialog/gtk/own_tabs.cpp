#include "host/dialog/gtk/own_tabs.hpp"

#include <algorithm>

#include "host/dialog/gtk/option_rows.hpp"
#include "host/dialog/gtk/shown_settings.hpp"
#include "host/dialog/settings/paper.hpp"

namespace tandemtrim::host {
namespace {

// The width of a small screen, less what surrounds the window.
constexpr int kWidest = 760;

}  // namespace

TabSettings OwnTabs::settings() { return {shownSettings(dialog_), dialog_.get_page_setup()->copy()}; }

void OwnTabs::refuseWrongPages() {
  auto* const entry = gtk_widget_get_template_child(GTK_WIDGET(dialog_.gobj()), GTK_TYPE_PRINT_UNIX_DIALOG,
                                                    "page_range_entry");
  const auto settings = shownSettings(dialog_);
  if (!GTK_IS_EDITABLE(entry) || settings->get_print_pages() != Gtk::PrintPages::RANGES) return;
  host::refuseWrongPages(gtk_editable_get_text(GTK_EDITABLE(entry)));
  refuseNoPages(*settings);
}

// GTK's own PPD takes the paper that was shown when the printer was chosen for its default.
void OwnTabs::addOptions(GtkPrinter* printer, ppd_file_t* ppd, Options& options) {
  refuseWrongPages();
  auto paper = defaultPaper(ppd);
  if (const auto setup = Glib::wrap(gtk_printer_get_default_page_size(printer)); setup && !paper)
    paper = setup->get_paper_size();
  addTabOptions(settings(), ppd, paper ? paper->gobj() : nullptr, untouched_, options);
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
  int least = 0;
  int liked = 0;
  int baseline = 0;
  content.measure(Gtk::Orientation::HORIZONTAL, -1, least, liked, baseline, baseline);
  content.set_size_request(std::min(liked, kWidest), -1);
}

}  // namespace tandemtrim::host
