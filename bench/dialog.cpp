// Shows GTK's print dialog until it is drawn with a printer's options, and with the panel as one of its pages
// if the printer's PPD and a bundle are given: dialog PRINTER [PPD BUNDLE]
#include <fstream>
#include <memory>
#include <string>

#include <gtkmm/init.h>

#include "adapters/linux/print_settings.hpp"
#include "bench/measured.hpp"
#include "bench/print_dialog.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/dialog/panel/panel_page.hpp"
#include "host/panel/panel_session.hpp"

namespace {

using namespace tandemtrim;

// The page as the host fills it.
struct Tab {
  explicit Tab(GtkPrintUnixDialog* dialog) {
    page->showText("");
    gtk_print_unix_dialog_add_custom_tab(dialog, GTK_WIDGET(page->gobj()), gtk_label_new("Tandem Trim"));
  }
  void open(const char* bundle, ppd_file_t* ppd) {
    const auto opened = host::openBundle(bundle, [](const std::string&) {});
    panel = std::make_unique<host::PanelSession>(opened, host::kGtkModule, settings, ppd);
    page->showView(GTK_WIDGET(panel->view().toolkitView()));
    panel->willShow();
  }

  platform::linux::PrintSettings settings;
  host::PanelPage* page = Gtk::make_managed<host::PanelPage>(
      host::PresetRow::Events{}, [](int) {}, [] { return std::string(); });
  std::unique_ptr<host::PanelSession> panel;
};

// The kilobytes of memory that this process has written. Memory that it only reads from files is shared.
long privateMemory() {
  std::ifstream rollup("/proc/self/smaps_rollup");
  long kilobytes = 0;
  for (std::string word; rollup >> word;) {
    if (word == "Private_Dirty:") rollup >> kilobytes;
  }
  return kilobytes;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc < 2 || argc > 4) return 2;
  if (gtk_init_check() == FALSE) return 1;
  // Called even without the tab, since the host's dialog always uses gtkmm.
  Gtk::init_gtkmm_internals();
  auto* const dialog = bench::makeDialog();
  host::PpdHandle ppd;
  std::unique_ptr<Tab> tab;
  if (argc > 2) {
    const bench::Measured measured("PPD");
    ppd.reset(ppdOpenFile(argv[2]));
  }
  if (argc > 2) tab = std::make_unique<Tab>(dialog);
  bench::show(dialog, argv[1]);
  if (argc > 3) {
    const auto before = privateMemory();
    tab->open(argv[3], ppd.get());
    bench::draw(dialog);
    std::printf("panel\t%ld\n", privateMemory() - before);
  }
  std::printf("process\t%ld\n", bench::allocations());
}
