#pragma once

#include "platform/extension.hpp"

namespace tandemtrim::host {

/// Gives a plug-in one job's settings and PPD, which must outlive its panels.
class Callback : public platform::HostCallback {
 public:
  /// `ppd` is null for a printer without one.
  Callback(platform::PrintSettings& settings, ppd_file_s* ppd) : settings_(settings), ppd_(ppd) {}
  platform::PrintSettings* printSettings() override { return &settings_; }
  ppd_file_s* ppdFile() override { return ppd_; }

 private:
  platform::PrintSettings& settings_;
  ppd_file_s* ppd_;
};

}  // namespace tandemtrim::host
