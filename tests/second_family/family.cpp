#include "tests/second_family/family.hpp"

#include <cstdlib>
#include <utility>

#include <cups/ppd.h>

namespace foldline {
namespace {

using namespace tandemtrim::platform;

ObjectRef text(const std::string& value) { return std::make_shared<const Object>(Object::Value(value)); }

class FoldlinePanel : public PrintPanel {
 public:
  FoldlinePanel(std::shared_ptr<Bundle> bundle, std::shared_ptr<HostCallback> host)
      : bundle_(std::move(bundle)), host_(std::move(host)) {
    for (const auto& setting : kSettings) {
      keywords_.emplace_back(setting.keyword);
      host_->printSettings()->PMPrintSettingsSetValue(setting.keyword, storedValue(setting), false);
    }
  }

  std::string panelName() override { return localized("Foldline"); }
  ObjectRef panelKind() override { return nullptr; }
  View* panelView() override { return &controls().view(); }
  Dictionary summaryInfo() override {
    Dictionary summary;
    Array order;
    for (const auto& setting : settings()) {
      auto shown = setting.value + (setting.unit.empty() ? "" : " " + setting.unit);
      for (const auto& choice : setting.choices) {
        if (choice.value == setting.value) shown = choice.title;
      }
      summary.emplace(setting.title, text(shown));
      order.push_back(text(setting.title));
    }
    summary.emplace(kSummaryDisplayOrderKey, std::make_shared<const Object>(Object::Value(order)));
    return summary;
  }
  void willShow() override { showStored(); }
  bool shouldHide() override { return true; }
  bool shouldShowHelp() override { return true; }
  const std::vector<std::string>& supportedPPDOptionKeys() override { return keywords_; }
  std::vector<PanelSetting> settings() const override {
    std::vector<PanelSetting> settings;
    for (const auto& setting : kSettings) {
      settings.push_back({setting.keyword,
                          setting.name,
                          localized(setting.name),
                          setting.kind,
                          {},
                          setting.minimum,
                          maximum(setting),
                          localized(setting.unit),
                          storedValue(setting)});
      for (const auto& value : setting.values) settings.back().choices.push_back({value, localized(value)});
    }
    return settings;
  }
  bool shouldPrint() override { return true; }
  bool saveValuesAndReturnError(std::string* /*error*/) override {
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
      const auto value = controls_ ? controls_->shown(i) : storedValue(kSettings.at(i));
      host_->printSettings()->PMPrintSettingsSetValue(kSettings.at(i).keyword, value, false);
    }
    return true;
  }
  bool restoreValuesAndReturnError(std::string* /*error*/) override {
    showStored();
    return true;
  }

 private:
  [[nodiscard]] std::string localized(const std::string& key) const {
    return key.empty() ? "" : bundle_->localizedStringForKey(key, "", std::nullopt);
  }
  [[nodiscard]] std::int64_t maximum(const Setting& setting) const {
    auto* const ppd = host_->ppdFile();
    const auto* const limit = ppd == nullptr ? nullptr : ppdFindAttr(ppd, setting.limit, nullptr);
    return limit == nullptr ? setting.maximum : std::atoll(limit->value);
  }
  [[nodiscard]] std::string storedValue(const Setting& setting) const {
    std::optional<std::string> value;
    host_->printSettings()->PMPrintSettingsGetValue(setting.keyword, value);
    return value.value_or(setting.defaultValue);
  }
  Controls& controls() {
    if (!controls_) controls_ = makeControls(settings());
    return *controls_;
  }
  void showStored() {
    for (std::size_t i = 0; controls_ && i < kSettings.size(); ++i)
      controls_->show(i, storedValue(kSettings.at(i)));
  }

  std::shared_ptr<Bundle> bundle_;
  std::shared_ptr<HostCallback> host_;
  std::vector<std::string> keywords_;
  std::unique_ptr<Controls> controls_;
};

class FoldlinePlugin : public Plugin {
 public:
  bool initWithBundle(std::shared_ptr<Bundle> bundle) override {
    bundle_ = std::move(bundle);
    return bundle_ != nullptr;
  }
  std::unique_ptr<PanelList> PDEPanelsForType(std::optional<std::string_view> type,
                                              std::shared_ptr<HostCallback> hostInfo) override {
    if (type != kPrintDialogExtensionType) return nullptr;
    auto panels = std::make_unique<PanelList>();
    panels->push_back(std::make_unique<FoldlinePanel>(bundle_, std::move(hostInfo)));
    return panels;
  }

 private:
  std::shared_ptr<Bundle> bundle_;
};

}  // namespace
}  // namespace foldline

extern "C" [[gnu::visibility("default")]] void LundFoldline(
    std::unique_ptr<tandemtrim::platform::Plugin>& made) noexcept {
  made = std::make_unique<foldline::FoldlinePlugin>();
}
