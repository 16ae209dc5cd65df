#include "plugin/panel.hpp"

#include <utility>

#include "platform/log.hpp"
#include "plugin/setting_info/settings.hpp"

namespace tandemtrim {

std::unique_ptr<MorvaTTPdePanelKV2> MorvaTTPdePanelKV2::initWithCallback(
    std::shared_ptr<MorvaTTPdeCallbackKV2> callback, std::shared_ptr<platform::Bundle> bundle) {
  auto made = std::unique_ptr<MorvaTTPdePanelKV2>(new MorvaTTPdePanelKV2);
  made->commonInfo_ = MorvaTTCommonInfoKV2::initWithCallback(std::move(callback), std::move(bundle));
  made->viewController_ = MorvaTTViewControllerKV2::initWithCommonInfo(made->commonInfo_);
  if (!made->viewController_) return nullptr;
  return made;
}

// The controller refers to the common info, so it is destroyed first; the default order is the reverse.
MorvaTTPdePanelKV2::~MorvaTTPdePanelKV2() {
  viewController_.reset();
  commonInfo_.reset();
  supportedOptions_.reset();
}

std::string MorvaTTPdePanelKV2::panelName() { return commonInfo_->localizedString(TTPanelNameKey); }

platform::ObjectRef MorvaTTPdePanelKV2::panelKind() { return commonInfo_->panelKindID(); }

platform::View* MorvaTTPdePanelKV2::panelView() {
  return viewController_->panelViewWithNibName(TTPanelNameKey);
}

platform::Dictionary MorvaTTPdePanelKV2::summaryInfo() {
  return viewController_->summaryInfoWithDispOrderKey(platform::kSummaryDisplayOrderKey);
}

void MorvaTTPdePanelKV2::willShow() {
  viewController_->restoreNonPPDSettingsFromPrintSettings();
  viewController_->updateView();
}

const std::vector<std::string>& MorvaTTPdePanelKV2::supportedPPDOptionKeys() {
  if (!supportedOptions_) {
    supportedOptions_ = std::make_unique<std::vector<std::string>>();
    for (const auto& setting : kSettings) supportedOptions_->emplace_back(setting.keyword);
  }
  platform::NSLog("supportedPPDOptionKeys:=NSArray(%@)", *supportedOptions_);
  return *supportedOptions_;
}

bool MorvaTTPdePanelKV2::saveValuesAndReturnError(std::string* /*error*/) {
  return viewController_->saveNonPPDSettingsToPrintSettings();
}

bool MorvaTTPdePanelKV2::restoreValuesAndReturnError(std::string* /*error*/) {
  willShow();
  return true;
}

}  // namespace tandemtrim
