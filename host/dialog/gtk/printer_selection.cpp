#include "host/dialog/gtk/printer_selection.hpp"

#include <array>
#include <optional>
#include <utility>

#include <glibmm/main.h>

#include "host/dialog/gtk/page_setup_menus.hpp"
#include "host/dialog/gtk/shown_settings.hpp"

namespace tandemtrim::host {
namespace {

constexpr unsigned kSelectAgain = 50;  // milliseconds
constexpr int kSelections = 400;

// Settings that the user can change while no printer is selected.
constexpr std::array<const char*, 2> kOfAnyPrinter{GTK_PRINT_SETTINGS_PRINT_PAGES,
                                                   GTK_PRINT_SETTINGS_PAGE_RANGES};

// GTK's list of printers, with its selection.
GtkSingleSelection* listWithin(GtkWidget* widget) {
  if (GTK_IS_COLUMN_VIEW(widget))
    return GTK_SINGLE_SELECTION(gtk_column_view_get_model(GTK_COLUMN_VIEW(widget)));
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (auto* const list = listWithin(child)) return list;
  }
  return nullptr;
}

// The printer that is selected in GTK's list, which may not have read its details yet, or null.
GtkPrinter* selectedInList(GtkWidget* dialog) {
  auto* const list = listWithin(dialog);
  return list == nullptr ? nullptr : static_cast<GtkPrinter*>(gtk_single_selection_get_selected_item(list));
}

std::string nameInList(Gtk::PrintUnixDialog& dialog) {
  auto* const printer = selectedInList(GTK_WIDGET(dialog.gobj()));
  return printer == nullptr ? "" : gtk_printer_get_name(printer);
}

// The printer that the user selected instead of this one. GTK itself selects only the default one.
std::optional<std::string> selectedInstead(Gtk::PrintUnixDialog& dialog, const std::string& printer,
                                           bool wasListed) {
  auto name = nameInList(dialog);
  if (name.empty() || name == printer) return std::nullopt;
  if (!wasListed && gtk_printer_is_default(selectedInList(GTK_WIDGET(dialog.gobj()))) != FALSE)
    return std::nullopt;
  return name;
}

}  // namespace

// GTK itself follows the property of the list, which changes after this signal.
PrinterSelection::PrinterSelection(Gtk::PrintUnixDialog& dialog,
                                   std::function<void(const std::string&)> onChoice)
    : dialog_(dialog), onChoice_(std::move(onChoice)), shown_(shownSettings(dialog)) {
  const auto chosen = [](PrinterSelection* selection) { selection->onListSelection(); };
  if (auto* const list = listWithin(GTK_WIDGET(dialog_.gobj())))
    g_signal_connect_swapped(list, "selection-changed", G_CALLBACK(+chosen), this);
}

PrinterSelection::~PrinterSelection() {
  selecting_.disconnect();
  if (auto* const list = listWithin(GTK_WIDGET(dialog_.gobj())))
    g_signal_handlers_disconnect_by_data(list, this);
}

void PrinterSelection::onListSelection() const {
  const auto name = nameInList(dialog_);
  if (!name.empty()) onChoice_(name);
}

GtkPrinter* PrinterSelection::printer() const {
  return gtk_print_unix_dialog_get_selected_printer(dialog_.gobj());
}

std::string PrinterSelection::name() const {
  return printer() == nullptr ? "" : gtk_printer_get_name(printer());
}

bool PrinterSelection::isPrinter() const {
  return printer() != nullptr && gtk_printer_is_virtual(printer()) == FALSE;
}

bool PrinterSelection::isFile() const { return printer() != nullptr && !isPrinter(); }

// Shows the settings except those that the user has changed since they were shown last.
void PrinterSelection::show(const Glib::RefPtr<Gtk::PrintSettings>& settings) {
  const auto now = shownSettings(dialog_);
  for (const char* key : kOfAnyPrinter) {
    const auto value = now->get(key);
    if (value.raw() != shown_->get(key).raw()) settings->set(key, value);
  }
  dialog_.set_settings(settings);
  shown_ = shownSettings(dialog_);
}

// GTK forgets the printer of its settings unless that printer is the first in its list, so the settings are
// set again until the printer is selected.
void PrinterSelection::select(const std::string& printer, const TabSettings& tabs,
                              const std::function<void()>& done) {
  auto trySelecting = [this, printer, tabs, wasListed = false]() mutable {
    // GTK still reads the printer's details. Showing settings now would disturb a user who types.
    if (nameInList(dialog_) == printer && name() != printer) {
      wasListed = true;
      return false;
    }
    const auto instead = selectedInstead(dialog_, printer, wasListed);
    const bool isSelected = name() == printer;
    tabs.settings->set_printer(instead.value_or(printer));
    // Copies and paper have an effect only for a selected printer.
    show(tabs.settings);
    wasListed = nameInList(dialog_) == printer;
    return instead || isSelected;
  };
  trySelecting();
  selecting_ = Glib::signal_timeout().connect(
      [this, tabs, done, trySelecting, tries = 0]() mutable {
        if (!trySelecting() && ++tries <= kSelections) return true;
        if (tabs.setup) showPageSetup(dialog_, *tabs.setup);
        done();
        return false;
      },
      kSelectAgain);
}

}  // namespace tandemtrim::host
