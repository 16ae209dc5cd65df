#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <utility>

#include <cups/ppd.h>

#include "adapters/linux/bundle.hpp"
#include "adapters/linux/print_settings.hpp"
#include "adapters/module/plugin.hpp"
#include "model/ticket_names.hpp"
#include "plugin/panel.hpp"
#include "tests/conformance/platform.hpp"
#include "view/view_names.hpp"

/// The host's half of the platforms that run on Linux; each of them adds the user's half.
namespace tandemtrim::conformance {

struct PpdClose {
  void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};

class Job : public platform::HostCallback {
 public:
  explicit Job(const std::optional<std::string>& ppd) : ppd_(ppd ? ppdOpenFile(ppd->c_str()) : nullptr) {
    if (ppd && !ppd_) throw std::runtime_error("libcups does not read " + *ppd);
  }
  platform::PrintSettings* printSettings() override { return &settings; }
  ppd_file_s* ppdFile() override { return ppd_.get(); }

  platform::linux::PrintSettings settings;

 private:
  std::unique_ptr<ppd_file_t, PpdClose> ppd_;
};

class LinuxPanel : public Panel {
 public:
  explicit LinuxPanel(std::unique_ptr<platform::PrintPanel> panel) : panel_(std::move(panel)) {}

  std::string panelName() override { return panel_->panelName(); }
  std::optional<std::string> panelKind() override {
    const auto kind = panel_->panelKind();
    return kind ? std::optional(*kind->as<std::string>()) : std::nullopt;
  }
  bool panelView() override { return panel_->panelView() != nullptr; }
  const void* viewIdentity() override { return panel_->panelView(); }
  Summary summaryInfo() override {
    Summary summary;
    for (const auto& [title, value] : panel_->summaryInfo()) {
      if (title == platform::kSummaryDisplayOrderKey) {
        summary.order.emplace();
        for (const auto& entry : *value->as<platform::Array>())
          summary.order->push_back(*entry->as<std::string>());
      } else {
        summary.rows[title] = *value->as<std::string>();
      }
    }
    return summary;
  }
  void emptySummary() override {
    auto&& summary = panel_->summaryInfo();
    summary.clear();
  }
  void willShow() override { panel_->willShow(); }
  bool shouldHide() override { return panel_->shouldHide(); }
  bool shouldShowHelp() override { return panel_->shouldShowHelp(); }
  bool shouldPrint() override { return panel_->shouldPrint(); }
  std::vector<std::string> supportedPPDOptionKeys() override { return panel_->supportedPPDOptionKeys(); }
  const void* keywordsIdentity() override { return &panel_->supportedPPDOptionKeys(); }
  bool save() override { return succeededSilently(panel_->saveValuesAndReturnError(&error_)); }
  bool restore() override { return succeededSilently(panel_->restoreValuesAndReturnError(&error_)); }

  void updateView() override { controller().updateView(); }
  void setViewIsInited(bool inited) override { controller().setViewIsInited(inited); }
  Accepted verifyValue(const std::string& textBox, int value) override {
    const auto& box = textBoxNamed(textBox);
    const platform::Object given(static_cast<std::int64_t>(value));
    const auto* accepted = box.verifyValue(given);
    if (accepted == &given) return Accepted::itself;
    if (accepted == box.min().get()) return Accepted::minimum;
    return accepted == box.max().get() ? Accepted::maximum : Accepted::another;
  }
  const void* minimumIdentity(const std::string& textBox) override {
    return textBoxNamed(textBox).min().get();
  }

 protected:
  [[nodiscard]] platform::PrintPanel& panel() const { return *panel_; }
  /// The core's panel, which the host's panel may wrap.
  [[nodiscard]] virtual platform::PrintPanel& corePanel() { return *panel_; }

 private:
  MorvaTTViewControllerKV2& controller() {
    return *dynamic_cast<MorvaTTPdePanelKV2&>(corePanel()).viewController();
  }
  // A margin's box is the first control of its ticket.
  const MorvaTTTextBoxKV2& textBoxNamed(const std::string& outlet) {
    for (std::size_t side = 0; side < kMarginOutlets.size(); ++side) {
      if (kMarginOutlets.at(side).textBox != outlet) continue;
      auto* ticket = controller().ticket()->ticketNamed(marginsOf(kTicketNames)[side]);
      return dynamic_cast<const MorvaTTTextBoxKV2&>(*ticket->targetInstances().front());
    }
    throw std::out_of_range("no margin has the box " + outlet);
  }
  // Whether a call succeeded and, as every call must, left the error text untouched.
  bool succeededSilently(bool result) const { return result && error_ == kUntouched; }

  static constexpr const char* kUntouched = "untouched";
  std::unique_ptr<platform::PrintPanel> panel_;
  std::string error_ = kUntouched;
};

/// A dialog that makes panels of a platform's subclass of LinuxPanel.
template <class PlatformPanel>
class LinuxDialog : public Dialog {
 public:
  explicit LinuxDialog(const Scene& scene) : job_(std::make_shared<Job>(scene.writePpd())) {
    std::string reason;
    auto bundle = platform::linux::Bundle::open(scene.writeBundle(), reason, {});
    if (!plugin_->initWithBundle(bundle)) throw std::runtime_error(reason);
    for (const auto& [key, value] : scene.stored) store(key, value);
  }

  std::unique_ptr<Panel> panelForType(std::optional<std::string> type, bool withCallback) override {
    auto panels = plugin_->PDEPanelsForType(type, withCallback ? job_ : nullptr);
    if (!panels) return nullptr;
    return std::make_unique<PlatformPanel>(std::move(panels->at(0)));
  }
  std::size_t panelCount() override {
    return plugin_->PDEPanelsForType(platform::kPrintDialogExtensionType, job_)->size();
  }

  std::optional<std::string> stored(const std::string& key) override {
    std::optional<std::string> value;
    job_->settings.PMPrintSettingsGetValue(key, value);
    return value;
  }
  void store(const std::string& key, const std::optional<std::string>& value) override {
    job_->settings.PMPrintSettingsSetValue(key, value, false);
  }
  std::vector<std::string> storedKeys() override {
    std::vector<std::string> keys;
    for (const auto& entry : job_->settings.entries()) keys.push_back(entry.key);
    return keys;
  }

 private:
  std::shared_ptr<Job> job_;
  std::unique_ptr<platform::Plugin> plugin_ = platform::makePlugin();
};

}  // namespace tandemtrim::conformance
