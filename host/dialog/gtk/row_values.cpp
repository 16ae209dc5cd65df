#include "host/dialog/gtk/row_values.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <gtk/gtkunixprint.h>

#include "host/dialog/gtk/option_rows.hpp"
#include "host/dialog/settings/tab_settings.hpp"

namespace tandemtrim::host {
namespace {

// GTK's own rows, by their names in its template; all others are found by their titles.
struct NamedRow {
  const char* keyword;
  const char* row;
};
constexpr const char* kDuplexRow = "duplex";
constexpr std::array<NamedRow, 9> kNamedRows{{{"job-priority", "job_prio"},
                                              {"number-up", "pages_per_sheet"},
                                              {"number-up-layout", "number_up_layout"},
                                              {"MediaType", "paper_type"},
                                              {"media-type", "paper_type"},
                                              {"InputSlot", "paper_source"},
                                              {"media-source", "paper_source"},
                                              {"OutputBin", "output_tray"},
                                              {"job-billing", "billing_info"}}};
// The properties with a row's option, and with the option's value. Their types are not public.
constexpr const char* kSource = "source";
constexpr const char* kValue = "value";

struct UnrefObject {
  void operator()(GObject* object) const { g_object_unref(object); }
};
using Source = std::unique_ptr<GObject, UnrefObject>;

bool hasProperty(gpointer object, const char* name, GType type) {
  auto* const property = g_object_class_find_property(G_OBJECT_GET_CLASS(object), name);
  return property != nullptr && (property->flags & G_PARAM_READABLE) != 0 &&
         g_type_is_a(property->value_type, type) != FALSE;
}

// Null for a row without an option, and when another version of GTK has no such property.
Source sourceOf(GtkWidget* row) {
  GObject* source = nullptr;
  if (row != nullptr && hasProperty(row, kSource, G_TYPE_OBJECT))
    g_object_get(row, kSource, &source, nullptr);
  Source found(source);
  return found && hasProperty(found.get(), kValue, G_TYPE_STRING) ? std::move(found) : nullptr;
}

// Sets the value; returns whether GTK accepts it, as one of the choices.
bool trySetValue(GObject* source, const std::string& value) {
  g_object_set(source, kValue, value.c_str(), nullptr);
  gchar* shown = nullptr;
  g_object_get(source, kValue, &shown, nullptr);
  const std::unique_ptr<gchar, decltype(&g_free)> kept(shown, g_free);
  return shown != nullptr && g_ascii_strcasecmp(shown, value.c_str()) == 0;
}

GtkWidget* namedRow(GtkWidget* dialog, const char* name) {
  return GTK_WIDGET(gtk_widget_get_template_child(dialog, GTK_TYPE_PRINT_UNIX_DIALOG, name));
}

GtkWidget* rowFor(GtkWidget* dialog, ppd_file_t* ppd, const Option& option) {
  if (isDuplexKeyword(option.keyword)) return namedRow(dialog, kDuplexRow);
  for (const auto& [keyword, row] : kNamedRows) {
    if (isSameKeyword(keyword, option.keyword)) return namedRow(dialog, row);
  }
  return optionRow(dialog, ppd, option.keyword);
}

// Shows "before,after", or only the sheet before.
RowShows showCovers(GtkWidget* dialog, const std::string& sheets) {
  const auto comma = std::min(sheets.find(','), sheets.size());
  const auto after = comma == sheets.size() ? "none" : sheets.substr(comma + 1);
  const auto shows = [&](const char* row, const std::string& sheet) {
    const auto source = sourceOf(namedRow(dialog, row));
    return source && trySetValue(source.get(), sheet);
  };
  const bool isBefore = shows("cover_before", sheets.substr(0, comma));
  return shows("cover_after", after) && isBefore ? RowShows::theValue : RowShows::noRow;
}

}  // namespace

RowShows showInRow(GtkWidget* dialog, ppd_file_t* ppd, const Option& option) {
  if (isSameKeyword(option.keyword, "job-sheets")) return showCovers(dialog, option.value);
  const auto source = sourceOf(rowFor(dialog, ppd, option));
  if (!source) return RowShows::noRow;
  for (const auto& value : spellings(option)) {
    if (trySetValue(source.get(), value)) return RowShows::theValue;
  }
  const bool isPrinterOption = ppd != nullptr && ppdFindOption(ppd, option.keyword.c_str()) != nullptr;
  return isPrinterOption ? RowShows::anotherValue : RowShows::noRow;
}

}  // namespace tandemtrim::host
