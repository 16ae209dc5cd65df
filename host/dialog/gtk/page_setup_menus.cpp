#include "host/dialog/gtk/page_setup_menus.hpp"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace tandemtrim::host {
namespace {

void collectMenus(GtkWidget* widget, std::vector<GtkDropDown*>& menus) {
  if (GTK_IS_DROP_DOWN(widget)) menus.push_back(GTK_DROP_DOWN(widget));
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    collectMenus(child, menus);
}

// The index of the paper in the menu, if this is the menu of papers.
std::optional<guint> indexOf(GtkDropDown* menu, Gtk::PaperSize paper) {
  auto* const model = gtk_drop_down_get_model(menu);
  const guint count = model == nullptr ? 0 : g_list_model_get_n_items(model);
  for (guint index = 0; index < count; ++index) {
    const std::unique_ptr<void, decltype(&g_object_unref)> item(g_list_model_get_item(model, index),
                                                                g_object_unref);
    if (!GTK_IS_PAGE_SETUP(item.get())) continue;
    auto* const listed = gtk_page_setup_get_paper_size(GTK_PAGE_SETUP(item.get()));
    if (gtk_paper_size_is_equal(listed, paper.gobj()) != FALSE) return index;
  }
  return std::nullopt;
}

bool isOfPapers(GtkDropDown* menu) {
  auto* const model = gtk_drop_down_get_model(menu);
  if (model == nullptr) return false;
  const std::unique_ptr<void, decltype(&g_object_unref)> first(g_list_model_get_item(model, 0),
                                                               g_object_unref);
  return GTK_IS_PAGE_SETUP(first.get());
}

// The menu of papers and, after it, that of orientations.
std::vector<GtkDropDown*> menusOf(Gtk::PrintUnixDialog& dialog) {
  std::vector<GtkDropDown*> menus;
  collectMenus(GTK_WIDGET(dialog.gobj()), menus);
  menus.erase(menus.begin(), std::ranges::find_if(menus, isOfPapers));
  menus.resize(std::min<std::size_t>(menus.size(), 2));
  return menus;
}

}  // namespace

// GTK's menus do not follow the page setup of their dialog.
void showPageSetup(Gtk::PrintUnixDialog& dialog, const Gtk::PageSetup& setup) {
  dialog.set_page_setup(setup.copy());
  const auto menus = menusOf(dialog);
  if (menus.size() < 2) return;
  const auto index = indexOf(menus[0], setup.get_paper_size());
  if (!index) return;
  gtk_drop_down_set_selected(menus[0], *index);
  gtk_drop_down_set_selected(menus[1], static_cast<guint>(setup.get_orientation()));
}

void enablePageSetup(Gtk::PrintUnixDialog& dialog, bool isLive) {
  for (auto* const menu : menusOf(dialog)) gtk_widget_set_sensitive(GTK_WIDGET(menu), isLive ? TRUE : FALSE);
}

}  // namespace tandemtrim::host
