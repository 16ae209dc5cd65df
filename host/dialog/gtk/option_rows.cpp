#include "host/dialog/gtk/option_rows.hpp"

#include <algorithm>
#include <functional>
#include <string_view>

namespace tandemtrim::host {
namespace {

constexpr int kAlwaysWhole = 20;  // letters

void forEachWithin(GtkWidget* widget, const std::function<void(GtkWidget*)>& visit) {
  visit(widget);
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    forEachWithin(child, visit);
}

bool isOptionRow(GtkWidget* widget) {
  return widget != nullptr && std::string_view(G_OBJECT_TYPE_NAME(widget)) == "GtkPrinterOptionWidget";
}

// By the type's name, since nothing else of some of GTK's types is public.
bool isWithin(GtkWidget* widget, const char* type) {
  const auto known = g_type_from_name(type);
  return known != 0 && gtk_widget_get_ancestor(widget, known) != nullptr;
}

// The label in a menu's button; the menu's list is in a popover.
bool isMenuValue(GtkWidget* widget) {
  return GTK_IS_LABEL(widget) && isWithin(widget, "GtkDropDown") && isWithin(widget, "GtkListItemWidget") &&
         !isWithin(widget, "GtkPopover");
}

// Whether a widget shows more than the titles of hidden rows.
bool showsMoreThanTitles(GtkWidget* widget) {
  if (gtk_widget_get_visible(widget) == FALSE || GTK_IS_LABEL(widget) || GTK_IS_SCROLLBAR(widget))
    return false;
  auto* child = gtk_widget_get_first_child(widget);
  if (isOptionRow(widget) || child == nullptr) return true;
  for (; child != nullptr; child = gtk_widget_get_next_sibling(child)) {
    if (showsMoreThanTitles(child)) return true;
  }
  return false;
}

void hideIfEmpty(GtkWidget* widget) {
  if (widget != nullptr && !showsMoreThanTitles(widget)) gtk_widget_set_visible(widget, FALSE);
}

// The notebook's page that a row is on. GTK makes a page visible again for each printer that needs it.
GtkWidget* pageOf(GtkWidget* row) {
  auto* page = row;
  while (page != nullptr && !GTK_IS_STACK(gtk_widget_get_parent(page))) page = gtk_widget_get_parent(page);
  return page;
}

// The tooltip of a shortened value shows all of it.
void shortenIfLong(GtkLabel* value) {
  const auto* const text = gtk_label_get_text(value);
  const bool isLong = g_utf8_strlen(text, -1) > kAlwaysWhole;
  gtk_label_set_ellipsize(value, isLong ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
  gtk_widget_set_tooltip_text(GTK_WIDGET(value), isLong ? text : nullptr);
}

// The row that a label titles, or null. The title is beside a menu, or within a check box.
GtkWidget* rowTitledBy(GtkLabel* label) {
  auto* const beside = gtk_label_get_mnemonic_widget(label);
  if (isOptionRow(beside)) return beside;
  auto* const checkBox = gtk_widget_get_ancestor(GTK_WIDGET(label), GTK_TYPE_CHECK_BUTTON);
  auto* const around = checkBox == nullptr ? nullptr : gtk_widget_get_parent(checkBox);
  return isOptionRow(around) ? around : nullptr;
}

// GTK does not say which keyword a row is for; it shows the keyword's text from the PPD.
bool isTitleOf(GtkLabel* label, const std::vector<std::string>& texts) {
  std::string text = gtk_label_get_text(label);
  if (text.ends_with(':')) text.pop_back();
  return std::ranges::find(texts, text) != texts.end();
}

}  // namespace

void hideOptionRows(GtkWidget* dialog, ppd_file_t& ppd, const std::vector<std::string>& keywords) {
  std::vector<std::string> texts;
  for (const auto& keyword : keywords) {
    if (const auto* option = ppdFindOption(&ppd, keyword.c_str())) texts.emplace_back(option->text);
  }
  std::vector<GtkWidget*> rows;
  forEachWithin(dialog, [&](GtkWidget* widget) {
    if (!GTK_IS_LABEL(widget)) return;
    auto* const row = rowTitledBy(GTK_LABEL(widget));
    if (row == nullptr || !isTitleOf(GTK_LABEL(widget), texts)) return;
    gtk_widget_set_visible(widget, FALSE);
    gtk_widget_set_visible(row, FALSE);
    rows.push_back(row);
  });
  for (auto* row : rows) {
    hideIfEmpty(gtk_widget_get_parent(gtk_widget_get_parent(row)));
    hideIfEmpty(pageOf(row));
  }
}

GtkWidget* optionRow(GtkWidget* dialog, ppd_file_t* ppd, const std::string& keyword) {
  const auto* const option = ppd == nullptr ? nullptr : ppdFindOption(ppd, keyword.c_str());
  if (option == nullptr) return nullptr;
  // GTK has its own titles for some keywords.
  const std::vector<std::string> texts{option->text, g_dgettext("gtk40", option->keyword)};
  GtkWidget* found = nullptr;
  forEachWithin(dialog, [&](GtkWidget* widget) {
    if (!GTK_IS_LABEL(widget)) return;
    auto* const row = rowTitledBy(GTK_LABEL(widget));
    if (row != nullptr && isTitleOf(GTK_LABEL(widget), texts)) found = row;
  });
  return found;
}

void shortenMenuValues(GtkWidget* dialog) {
  forEachWithin(dialog, [](GtkWidget* widget) {
    if (!isMenuValue(widget)) return;
    g_signal_handlers_disconnect_by_func(widget, reinterpret_cast<gpointer>(shortenIfLong), nullptr);
    g_signal_connect(widget, "notify::label", G_CALLBACK(shortenIfLong), nullptr);
    shortenIfLong(GTK_LABEL(widget));
  });
}

}  // namespace tandemtrim::host
