#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include <cups/ppd.h>

#include "adapters/linux/bundle.hpp"
#include "adapters/linux/print_settings.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/panel/callback.hpp"
#include "plugin/plugin.hpp"

namespace tandemtrim::bench {

/// A job for a printer whose PPD is open.
struct Job {
  explicit Job(const char* ppdFile) : ppd(ppdOpenFile(ppdFile)) {
    if (!ppd) throw std::runtime_error(std::string("libcups does not read ") + ppdFile);
  }

  host::PpdHandle ppd;
  platform::linux::PrintSettings settings;
  std::shared_ptr<platform::HostCallback> callback = std::make_shared<host::Callback>(settings, ppd.get());
};

/// The bundle, and the panel that its plug-in makes for the job.
struct OpenedPanel {
  OpenedPanel(const std::string& path, const Job& job) {
    std::string reason;
    if (!plugin.initWithBundle(platform::linux::Bundle::open(path, reason))) throw std::runtime_error(reason);
    panels = plugin.PDEPanelsForType(platform::kPrintDialogExtensionType, job.callback);
    if (!panels) throw std::runtime_error("the plug-in has no panel");
  }
  [[nodiscard]] platform::PrintPanel& panel() const { return *panels->front(); }

  MorvaTTPdePluginKV2 plugin;
  std::unique_ptr<platform::PanelList> panels;
};

}  // namespace tandemtrim::bench
