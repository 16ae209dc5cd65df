// Counts how often the program changes GTK's widgets for one keystroke in a margin box: writes BUNDLE PPD
#include <cstdio>
#include <cstring>
#include <memory>

#include <gtk/gtk.h>
#include <gtkmm/init.h>

#include "adapters/linux/print_settings.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/panel/callback.hpp"
#include "host/panel/plugin_loader.hpp"

namespace {

using namespace tandemtrim;

int writes = 0;

void onWrite() { ++writes; }

// Counts every change of a text or state of the widgets.
void countWrites(GtkWidget* widget) {
  for (const char* change : {"notify::text", "notify::label", "notify::sensitive", "notify::active"}) {
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(widget), std::strchr(change, ':') + 2) != nullptr)
      g_signal_connect(widget, change, G_CALLBACK(onWrite), nullptr);
  }
  if (GTK_IS_EDITABLE(widget)) return;
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    countWrites(child);
}

GtkWidget* firstBox(GtkWidget* widget) {
  if (GTK_IS_EDITABLE(widget)) return widget;
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (auto* const box = firstBox(child)) return box;
  }
  return nullptr;
}

// Inserts the text into an empty box, as one edit; returns how often the program then wrote.
int writesAfter(GtkWidget* box, const char* text) {
  gtk_editable_delete_text(GTK_EDITABLE(box), 0, -1);
  int position = 0;
  gtk_editable_insert_text(GTK_EDITABLE(box), text, -1, &position);
  writes = 0;
  while (g_main_context_pending(nullptr) != FALSE) g_main_context_iteration(nullptr, FALSE);
  return writes;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 3 || gtk_init_check() == FALSE) return 2;
  Gtk::init_gtkmm_internals();
  const host::PpdHandle ppd(ppdOpenFile(argv[2]));
  platform::linux::PrintSettings settings;
  settings.PMPrintSettingsSetValue("MVTandemTrim", "On", false);
  const auto plugin =
      host::loadPlugin(host::openBundle(argv[1], [](const std::string&) {}), host::kGtkModule);
  const auto panels = host::openPanels(plugin, std::make_shared<host::Callback>(settings, ppd.get()));
  auto* const view = panels->front()->panelView();
  if (view == nullptr) return 1;
  panels->front()->willShow();
  auto* const widget = GTK_WIDGET(view->toolkitView());
  countWrites(widget);
  auto* const box = firstBox(widget);
  if (box == nullptr) return 1;
  std::printf("unchanged\t%d\n", writesAfter(box, "12"));
  std::printf("corrected\t%d\n", writesAfter(box, "1a2"));
}
