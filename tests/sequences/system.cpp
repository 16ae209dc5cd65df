#include "tests/sequences/system.hpp"

#include <stdexcept>

#include <cups/ppd.h>

#include "adapters/memory/controls.hpp"
#include "adapters/memory/panel.hpp"
#include "platform/log.hpp"
#include "platform/property_list.hpp"
#include "plugin/panel.hpp"
#include "plugin/setting_info/settings.hpp"
#include "tests/conformance/scene.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace sequences {
namespace {

namespace memory = platform::memory;

int linesLogged = 0;

platform::ObjectRef textObject(const Text& text) { return text ? platform::makeObject(*text) : nullptr; }

platform::ObjectRef numberObject(const Text& text) {
  if (!text) return nullptr;
  if (text->find('.') != std::string::npos) return platform::makeObject(std::stod(*text));
  return platform::makeObject(static_cast<std::int64_t>(std::stoll(*text)));
}

platform::Dictionary dictionary(
    std::initializer_list<std::pair<std::string_view, platform::ObjectRef>> entries) {
  platform::Dictionary made;
  for (const auto& [key, object] : entries) {
    if (object) made.emplace(key, object);
  }
  return made;
}

std::shared_ptr<const platform::Dictionary> settingInfo(const Configuration& bundle) {
  platform::Dictionary defaults = dictionary({
      {TTCIPlistSubKeyMarginMin, numberObject(bundle.min)},
      {TTCIPlistSubKeyMarginMax, numberObject(bundle.max)},
      {TTCIPlistSubKeyMarginLimit, numberObject(bundle.limit)},
  });
  platform::Dictionary keys;
  for (std::size_t setting = 0; setting < kSettings; ++setting) {
    const std::string subKey(tandemtrim::kSettings.at(setting).subKey);
    const auto& value = bundle.defaults.at(setting);
    if (auto object = setting < kFirstMargin ? textObject(value) : numberObject(value))
      defaults[subKey] = object;
    if (auto key = textObject(bundle.keys.at(setting))) keys[subKey] = key;
  }
  return std::make_shared<platform::Dictionary>(dictionary({
      {TTCIPlistMainKeyDefaultValue, platform::makeObject(std::move(defaults))},
      {TTCIPlistMainKeyTicketKey, platform::makeObject(std::move(keys))},
      {TTCIPlistMainKeyId,
       platform::makeObject(dictionary({{TTCIPlistSubKeyPanelKind, textObject(bundle.kind)}}))},
      {TTCIPlistMainKeyWording, platform::makeObject(dictionary({
                                    {TTCIPlistSubKeyMinLabelForValueRange, textObject(bundle.minToken)},
                                    {TTCIPlistSubKeyMaxLabelForValueRange, textObject(bundle.maxToken)},
                                }))},
  }));
}

// Bundles, plug-ins and PPD files are made once for all sequences.
class MemoryBundle : public platform::Bundle {
 public:
  explicit MemoryBundle(std::size_t number) : configuration_(configurations().at(number)), number_(number) {}

  [[nodiscard]] std::optional<std::string> pathForResource(std::string_view name,
                                                           std::string_view type) const override {
    if (name != TTCISettingInfoName || type != TTCIPlistResourceType) return std::nullopt;
    return std::to_string(number_);
  }
  [[nodiscard]] std::string localizedStringForKey(std::string_view key, std::string_view /*value*/,
                                                  std::optional<std::string_view> /*table*/) const override {
    const auto entry = configuration_.strings.find(std::string(key));
    return entry == configuration_.strings.end() ? std::string(key) : entry->second;
  }

 private:
  const Configuration& configuration_;
  std::size_t number_;
};

const std::shared_ptr<MorvaTTPdePluginKV2>& plugin(std::size_t configuration) {
  static const auto kPlugins = [] {
    std::vector<std::shared_ptr<MorvaTTPdePluginKV2>> made;
    for (std::size_t number = 0; number < configurations().size(); ++number) {
      made.push_back(std::make_shared<MorvaTTPdePluginKV2>());
      made.back()->initWithBundle(std::make_shared<MemoryBundle>(number));
    }
    return made;
  }();
  return kPlugins.at(configuration);
}

std::shared_ptr<ppd_file_t> openPpd(const Printer& printer) {
  conformance::Scene scene;
  scene.ppdAttributes->clear();
  for (std::size_t side = 0; side < kSides; ++side) {
    if (const auto& value = printer.at(side)) scene.ppdAttributes->emplace(kMargins[side].ppdKey, *value);
  }
  const auto path = scene.writePpd();
  std::shared_ptr<ppd_file_t> opened(ppdOpenFile(path->c_str()), ppdClose);
  if (!opened) throw std::runtime_error("libcups does not read " + *path);
  return opened;
}

ppd_file_t* ppd(std::size_t printer) {
  static const auto kOpened = [] {
    std::vector<std::shared_ptr<ppd_file_t>> opened;
    for (const auto& one : printers()) opened.push_back(openPpd(one));
    return opened;
  }();
  return kOpened.at(printer).get();
}

template <class Class, class Control>
Class& as(Control* control) {
  return static_cast<Class&>(*control);
}

void lookAt(const MorvaTTViewControllerKV2& controller, Look& look) {
  const auto& check = as<memory::CheckBox>(controller.tandemTrimValid());
  const auto& button = as<memory::Button>(controller.defaultButton());
  look.check = check.state();
  look.checkTitle = check.title();
  look.buttonTitle = button.title();
  look.buttonEnabled = button.isEnabled();

  const std::array menus{controller.directionPopUp(), controller.positionPopUp()};
  for (std::size_t index = 0; index < kMenus; ++index) {
    const auto& menu = as<memory::PopUpButton>(menus.at(index));
    auto& shown = look.menus.at(index);
    shown.items.resize(menu.items().size());
    for (std::size_t item = 0; item < shown.items.size(); ++item)
      shown.items[item] = {menu.items()[item].title(), menu.items()[item].representedObject()};
    shown.selected = menu.selectedIndex();
    shown.enabled = menu.isEnabled();
  }

  const std::array boxes{controller.textBoxMarginTop(), controller.textBoxMarginBottom(),
                         controller.textBoxMarginLeft(), controller.textBoxMarginRight()};
  const std::array steppers{controller.stepperMarginTop(), controller.stepperMarginBottom(),
                            controller.stepperMarginLeft(), controller.stepperMarginRight()};
  for (std::size_t side = 0; side < kSides; ++side) {
    const auto& box = as<memory::TextBox>(boxes.at(side));
    const auto& stepper = as<memory::Stepper>(steppers.at(side));
    look.margins.at(side) = {box.stringValue(),  stepper.stringValue(), stepper.minValue(),
                             stepper.maxValue(), box.isEnabled(),       stepper.isEnabled()};
  }

  const std::array labels{controller.labelDirection(),       controller.labelPosition(),
                          controller.labelMarginTop(),       controller.labelMarginBottom(),
                          controller.labelMarginLeft(),      controller.labelMarginRight(),
                          controller.labelMarginLimitTop(),  controller.labelMarginLimitBottom(),
                          controller.labelMarginLimitLeft(), controller.labelMarginLimitRight()};
  for (std::size_t index = 0; index < labels.size(); ++index) {
    const auto& label = as<memory::TextLabel>(labels.at(index));
    look.labels.at(index) = label.stringValue();
    look.dimmed.at(index) = label.textColor() != platform::Color::blackColor;
  }
}

std::string textOf(const platform::Dictionary& summary) {
  std::string text;
  std::string order;
  for (const auto& [title, value] : summary) {
    if (title != platform::kSummaryDisplayOrderKey) {
      text += title + "=" + *value->as<std::string>() + "\n";
      continue;
    }
    for (const auto& one : *value->as<platform::Array>()) order += "\n" + *one->as<std::string>();
  }
  return text + order;
}

std::string description(platform::PrintPanel& panel) {
  linesLogged = 0;
  const auto kind = panel.panelKind();
  auto text = panel.panelName() + "|" + (kind ? *kind->as<std::string>() : "none") + "|" +
              (panel.shouldHide() ? "hide " : "") + (panel.shouldShowHelp() ? "help " : "") +
              (panel.shouldPrint() ? "print" : "") + "|";
  for (const auto& keyword : panel.supportedPPDOptionKeys()) text += keyword + " ";
  return text + "|" + std::to_string(linesLogged) + " line logged";
}

constexpr std::array<const char*, kMenus> kPopUps{"directionPopUp", "positionPopUp"};

bool act(const Operation& operation, memory::Panel& user) {
  switch (operation.call) {
    case Call::type:
      return user.type(kMarginOutlets.at(operation.which).textBox, operation.text);
    case Call::append:
      return user.append(kMarginOutlets.at(operation.which).textBox, operation.text);
    case Call::backspace:
      return user.backspace(kMarginOutlets.at(operation.which).textBox);
    case Call::step:
      return user.step(kMarginOutlets.at(operation.which).stepper, operation.number);
    case Call::choose:
      return user.choose(kPopUps.at(operation.which), static_cast<std::size_t>(operation.number));
    case Call::clickCheck:
      return user.click("tandemTrimValid");
    case Call::clickDefault:
      return user.click("defaultButton");
    default:
      user.setMixed("tandemTrimValid");
      return true;
  }
}

}  // namespace

// The host of one panel. Its print settings are those of `master`, or without a master those of `current`.
struct System::Host : platform::HostCallback {
  explicit Host(std::shared_ptr<Host> master, std::size_t printer)
      : master_(std::move(master)), ppd_(ppd(printer)) {}
  [[nodiscard]] platform::PrintSettings* printSettings() override {
    return master_ ? master_->printSettings() : current;
  }
  [[nodiscard]] ppd_file_s* ppdFile() override { return ppd_; }

  platform::PrintSettings* current = nullptr;

 private:
  std::shared_ptr<Host> master_;
  ppd_file_t* ppd_;
};

System::System() : host_(std::make_shared<Host>(nullptr, 0)) {
  for (auto& job : jobs_) job = std::make_shared<platform::linux::PrintSettings>();
  host_->current = jobs_.front().get();
}

std::string System::makePanel(const Operation& operation) {
  auto panels =
      plugin(operation.which)
          ->PDEPanelsForType(platform::kPrintDialogExtensionType,
                             std::make_shared<Host>(host_, static_cast<std::size_t>(operation.number)));
  if (!panels) return "none";
  panels_.at(operation.panel) = {std::move(panels), nullptr};
  return "a panel";
}

std::string System::ask(const Operation& operation, Opened& opened) {
  auto& panel = *opened.panels->front();
  switch (operation.call) {
    case Call::dropPanel:
      opened = {};
      return {};
    case Call::panelView:
      return panel.panelView() == nullptr ? "no view" : "a view";
    case Call::willShow:
      panel.willShow();
      return "true";
    case Call::restore:
      return panel.restoreValuesAndReturnError(nullptr) ? "true" : "false";
    case Call::save:
      return panel.saveValuesAndReturnError(nullptr) ? "true" : "false";
    case Call::summary:
      return textOf(panel.summaryInfo());
    case Call::describe:
      return description(panel);
    default:
      if (opened.view == nullptr) return "no view";
      return act(operation, dynamic_cast<memory::Panel&>(*opened.view)) ? "done" : "ignored";
  }
}

std::string System::run(const Operation& operation) {
  const auto number = static_cast<std::size_t>(operation.number);
  const auto& key = *configurations().front().keys.at(operation.which < kSettings ? operation.which : 0);
  switch (operation.call) {
    case Call::makePanel:
      return makePanel(operation);
    case Call::refuse: {
      const auto returned = [](const auto& panels) { return panels ? "some " : "none "; };
      auto& refusing = *plugin(0);
      auto text = std::string(returned(refusing.PDEPanelsForType(std::nullopt, host_)));
      text += returned(refusing.PDEPanelsForType("bdb091f4-e57f-11d3-b5cc-0050e4603277", host_));
      text += refusing.PDEPanelsForType(platform::kPrintDialogExtensionType, nullptr) ? "some" : "none";
      return text;
    }
    case Call::changeJob:
      host_->current = number == kJobs ? nullptr : jobs_.at(number).get();
      return {};
    case Call::store:
    case Call::lock:
      jobs_.at(number)->PMPrintSettingsSetValue(key, operation.text, operation.call == Call::lock);
      return {};
    case Call::remove:
      jobs_.at(number)->PMPrintSettingsSetValue(key, std::nullopt, false);
      return {};
    default:
      break;
  }
  auto& opened = panels_.at(operation.panel);
  return opened.panels ? ask(operation, opened) : "no panel";
}

void System::play(const Operation& operation) {
  try {
    observation_.result = run(operation);
  } catch (const std::exception&) {
    observation_.result = "raised";
  }
  for (std::size_t index = 0; index < kPanels; ++index) {
    auto& look = observation_.looks.at(index);
    auto& opened = panels_.at(index);
    const auto* panel =
        opened.panels ? dynamic_cast<MorvaTTPdePanelKV2*>(opened.panels->front().get()) : nullptr;
    opened.view = panel == nullptr ? nullptr : panel->viewController()->tandemTrimView();
    if (opened.view == nullptr) {
      look.reset();
    } else {
      if (!look) look.emplace();
      lookAt(*panel->viewController(), *look);
    }
  }
  for (std::size_t index = 0; index < kJobs; ++index) {
    const auto& entries = jobs_.at(index)->entries();
    auto& job = observation_.jobs.at(index);
    job.resize(entries.size());
    for (std::size_t entry = 0; entry < entries.size(); ++entry)
      job[entry] = {entries[entry].key, entries[entry].value};
  }
}

}  // namespace sequences

namespace platform {

std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path) {
  static const auto kSettingInfos = [] {
    std::vector<std::shared_ptr<const Dictionary>> made;
    for (const auto& one : sequences::configurations()) made.push_back(sequences::settingInfo(one));
    return made;
  }();
  return path ? kSettingInfos.at(std::stoul(*path)) : nullptr;
}

void NSLog(std::string_view /*format*/, std::span<const std::string> /*list*/) { ++sequences::linesLogged; }

}  // namespace platform
}  // namespace tandemtrim
