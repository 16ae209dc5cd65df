// Has GTK's print dialog build its own widgets for a printer's options, and then the panel its view, in the
// dialog as it stands: options PRINTER BUNDLE PPD
#include <memory>
#include <optional>

#include <gtkmm/init.h>

#include "adapters/linux/print_settings.hpp"
#include "bench/measured.hpp"
#include "bench/print_dialog.hpp"
#include "host/cups/cups_handles.hpp"
#include "host/panel/callback.hpp"
#include "host/panel/plugin_loader.hpp"

namespace {

using namespace tandemtrim;

std::optional<bench::Measured> options;

// The dialog builds in one go from here until it tells that the printer is selected.
gboolean onDetails(GSignalInvocationHint*, guint, const GValue*, void*) {
  options.emplace("options");
  return TRUE;
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 4 || gtk_init_check() == FALSE) return 2;
  auto* const dialog = bench::makeDialog();
  g_signal_add_emission_hook(g_signal_lookup("details-acquired", GTK_TYPE_PRINTER), 0, onDetails, nullptr,
                             nullptr);
  g_signal_connect(dialog, "notify::selected-printer", G_CALLBACK(+[] { options.reset(); }), nullptr);
  bench::show(dialog, argv[1]);

  Gtk::init_gtkmm_internals();
  const host::PpdHandle ppd(ppdOpenFile(argv[3]));
  platform::linux::PrintSettings settings;
  const auto plugin =
      host::loadPlugin(host::openBundle(argv[2], [](const std::string&) {}), host::kGtkModule);
  const auto panels = host::openPanels(plugin, std::make_shared<host::Callback>(settings, ppd.get()));
  const bench::Measured measured("view");
  return panels->front()->panelView() == nullptr ? 1 : 0;
}
