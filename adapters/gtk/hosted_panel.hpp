#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/gtk/panel.hpp"
#include "platform/extension.hpp"

namespace tandemtrim::platform::gtk {

/// Wraps a panel for its host. Edits are posted with a delay; every operation but settings() first posts the
/// pending ones, so that the host never sees a typed text that is not corrected yet.
class HostedPanel : public PrintPanel {
 public:
  explicit HostedPanel(std::unique_ptr<PrintPanel> panel) : panel_(std::move(panel)) {}

  [[nodiscard]] std::string panelName() override { return upToDate().panelName(); }
  [[nodiscard]] ObjectRef panelKind() override { return upToDate().panelKind(); }
  [[nodiscard]] View* panelView() override;
  [[nodiscard]] Dictionary summaryInfo() override { return upToDate().summaryInfo(); }
  void willShow() override { upToDate().willShow(); }
  [[nodiscard]] bool shouldHide() override { return upToDate().shouldHide(); }
  [[nodiscard]] bool shouldShowHelp() override { return upToDate().shouldShowHelp(); }
  [[nodiscard]] const std::vector<std::string>& supportedPPDOptionKeys() override {
    return upToDate().supportedPPDOptionKeys();
  }
  /// Pending edits change nothing that is stored, so they stay pending.
  [[nodiscard]] std::vector<PanelSetting> settings() const override { return panel_->settings(); }
  [[nodiscard]] bool shouldPrint() override { return upToDate().shouldPrint(); }
  bool saveValuesAndReturnError(std::string* error) override {
    return upToDate().saveValuesAndReturnError(error);
  }
  bool restoreValuesAndReturnError(std::string* error) override {
    return upToDate().restoreValuesAndReturnError(error);
  }

  /// Posts the pending edits and returns the panel.
  [[nodiscard]] PrintPanel& upToDate();

 private:
  std::unique_ptr<PrintPanel> panel_;
  Panel* view_ = nullptr;
};

}  // namespace tandemtrim::platform::gtk
