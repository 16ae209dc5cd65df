#include "host/dialog/dialog_options.hpp"

#include <charconv>
#include <string_view>

#include <gtk/gtkunixprint.h>

namespace tandemtrim::host {
namespace {

constexpr std::string_view kPrefix = "cups-";
// What GTK stands in a row whose choice the printer cannot do just now.
constexpr std::string_view kIgnored = "gtk-ignore-value";

void add(const char* key, const char* value, void* options) {
  const std::string_view name = key;
  if (name.starts_with(kPrefix) && value != kIgnored)
    setOption(*static_cast<Options*>(options), {std::string(name.substr(kPrefix.size())), value});
}

// GTK counts pages from 0, the job option from 1.
std::string pageRanges(GtkPrintJob* job) {
  int count = 0;
  const auto* const ranges = gtk_print_job_get_page_ranges(job, &count);
  std::string text;
  for (int i = 0; i < count; ++i) {
    const int first = ranges[i].start + 1;
    const int last = ranges[i].end + 1;
    text += (text.empty() ? "" : ",") + std::to_string(first);
    if (last != first) text += '-' + (last > 0 ? std::to_string(last) : "");
  }
  return text;
}

}  // namespace

Options dialogOptions(Gtk::PrintUnixDialog& dialog, const std::string& title) {
  auto* const settings = gtk_print_unix_dialog_get_settings(dialog.gobj());
  // A job that is never sent: making it puts the dialog's choices into the settings.
  auto* const job =
      gtk_print_job_new(title.c_str(), gtk_print_unix_dialog_get_selected_printer(dialog.gobj()), settings,
                        gtk_print_unix_dialog_get_page_setup(dialog.gobj()));
  Options options;
  gtk_print_settings_foreach(settings, &add, &options);
  if (const int copies = gtk_print_settings_get_n_copies(settings); copies > 1)
    setOption(options, {"copies", std::to_string(copies)});
  if (gtk_print_settings_get_print_pages(settings) == GTK_PRINT_PAGES_RANGES) {
    if (auto ranges = pageRanges(job); !ranges.empty())
      setOption(options, {"page-ranges", std::move(ranges)});
  }
  switch (gtk_print_settings_get_page_set(settings)) {
    case GTK_PAGE_SET_EVEN:
      setOption(options, {"page-set", "even"});
      break;
    case GTK_PAGE_SET_ODD:
      setOption(options, {"page-set", "odd"});
      break;
    default:
      break;
  }
  g_object_unref(job);
  g_object_unref(settings);
  return options;
}

void showOptions(const Options& options, Gtk::PrintSettings& settings) {
  for (const auto& [keyword, value] : options) {
    int copies = 0;
    if (keyword == "copies") {
      std::from_chars(value.data(), value.data() + value.size(), copies);
      settings.set_n_copies(copies);
    } else {
      settings.set(std::string(kPrefix) + keyword, value);
    }
  }
}

}  // namespace tandemtrim::host
