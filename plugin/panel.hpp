#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/extension.hpp"
#include "plugin/setting_info/common_info.hpp"
#include "view/view_controller.hpp"

namespace tandemtrim {

/// The key of the panel's name in the string tables, and the name of its nib.
inline constexpr std::string_view TTPanelNameKey = "TandemTrim";

/// The "Tandem Trim" panel: makes the setting information and the view controller, and forwards the host's
/// requests to them.
class MorvaTTPdePanelKV2 : public platform::PrintPanel {
 public:
  /// Makes the panel, and stores the defaults of the settings that the job lacks. Null when an argument is
  /// null or a part of the panel cannot be made; exceptions raised while its parts are made reach the caller.
  [[nodiscard]] static std::unique_ptr<MorvaTTPdePanelKV2> initWithCallback(
      std::shared_ptr<MorvaTTPdeCallbackKV2> callback, std::shared_ptr<platform::Bundle> bundle);
  MorvaTTPdePanelKV2(const MorvaTTPdePanelKV2&) = delete;
  MorvaTTPdePanelKV2& operator=(const MorvaTTPdePanelKV2&) = delete;
  ~MorvaTTPdePanelKV2() override;

  [[nodiscard]] std::string panelName() override;
  [[nodiscard]] platform::ObjectRef panelKind() override;
  [[nodiscard]] platform::View* panelView() override;
  [[nodiscard]] platform::Dictionary summaryInfo() override;
  void willShow() override;
  [[nodiscard]] bool shouldHide() override { return true; }
  [[nodiscard]] bool shouldShowHelp() override { return true; }
  /// Also writes the list to the system log.
  [[nodiscard]] const std::vector<std::string>& supportedPPDOptionKeys() override;
  [[nodiscard]] std::vector<platform::PanelSetting> settings() const override;
  [[nodiscard]] bool shouldPrint() override { return true; }
  /// Returns the result of the view controller's save; never writes `error`.
  bool saveValuesAndReturnError(std::string* error) override;
  /// Always true; never writes `error`.
  bool restoreValuesAndReturnError(std::string* error) override;

  [[nodiscard]] MorvaTTViewControllerKV2* viewController() const { return viewController_.get(); }
  [[nodiscard]] const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo() const { return commonInfo_; }

 private:
  MorvaTTPdePanelKV2() = default;

  std::unique_ptr<MorvaTTViewControllerKV2> viewController_;
  std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo_;
  std::unique_ptr<std::vector<std::string>> supportedOptions_;
};

}  // namespace tandemtrim
