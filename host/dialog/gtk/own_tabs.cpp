#include "host/dialog/gtk/own_tabs.hpp"

#include <algorithm>

#include "host/dialog/gtk/option_rows.hpp"

namespace tandemtrim::host {
namespace {

// The width of a small screen, less what surrounds the window.
constexpr int kWidest = 760;

}  // namespace

TabSettings OwnTabs::settings() { return {dialog_.get_settings(), dialog_.get_page_setup()->copy()}; }

void OwnTabs::addOptions(GtkPrinter* printer, ppd_file_t* ppd, Options& options) {
  const auto setup = Glib::wrap(gtk_printer_get_default_page_size(printer));
  addTabOptions(settings(), ppd, setup ? gtk_page_setup_get_paper_size(setup->gobj()) : nullptr, untouched_,
                options);
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
