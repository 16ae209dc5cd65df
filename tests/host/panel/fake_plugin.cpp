// A plug-in with a small panel. The file "behaviour.txt" in its bundle's resources names a call, and how that
// call misbehaves. Without the file, every call works.
#include <fstream>
#include <stdexcept>
#include <utility>

#include <dlfcn.h>

#include "adapters/memory/panel_view.hpp"
#include "platform/extension.hpp"

namespace {

using namespace tandemtrim::platform;
using memory::ControlKind;
using memory::ControlState;

struct Behaviour {
  std::string call;
  std::string misdeed;

  [[nodiscard]] bool is(std::string_view name, std::string_view what) const {
    return call == name && misdeed == what;
  }

  void run(std::string_view name) const {
    if (is(name, "raises")) throw std::runtime_error("broken on purpose");
    if (is(name, "raises-int")) throw 42;
  }
};

ObjectRef text(const std::string& value) { return std::make_shared<const Object>(Object::Value(value)); }

class FakeView : public memory::PanelView {
 public:
  explicit FakeView(const Behaviour& behaviour) : behaviour_(behaviour) {
    controls_[0] = {.outlet = "label",
                    .name = "",
                    .kind = ControlKind::label,
                    .text = "Fake",
                    .choices = {},
                    .selected = {}};
    controls_[1] = {.outlet = "onBox",
                    .name = "Valid",
                    .kind = ControlKind::checkBox,
                    .text = "On",
                    .choices = {},
                    .selected = {}};
    controls_[2] = {.outlet = "menu",
                    .name = "Position",
                    .kind = ControlKind::popUp,
                    .text = "Links",
                    .choices = {{"Links", "Left"}, {"Rechts", "Right"}},
                    .selected = 0};
    controls_[3] = {.outlet = "topBox",
                    .name = "Top",
                    .kind = ControlKind::textBox,
                    .text = "5",
                    .choices = {},
                    .selected = {},
                    .min = 0,
                    .max = 20};
    controls_[4] = {.outlet = "button",
                    .name = "RestoreDefault",
                    .kind = ControlKind::button,
                    .text = "Defaults",
                    .choices = {},
                    .selected = {}};
  }

  // In a program that has loaded GTK, the view is a GTK label.
  [[nodiscard]] void* toolkitView() override {
    auto* const toolkit = dlopen("libgtk-4.so.1", RTLD_LAZY | RTLD_NOLOAD);
    if (toolkit == nullptr) return nullptr;
    using NewLabel = void* (*)(const char*);
    if (label_ == nullptr) label_ = reinterpret_cast<NewLabel>(dlsym(toolkit, "gtk_label_new"))("Fake");
    return label_;
  }
  [[nodiscard]] std::vector<ControlState> controls() const override {
    behaviour_.run("controls");
    return {std::begin(controls_), std::end(controls_)};
  }
  [[nodiscard]] ControlState control(std::string_view name) const override {
    return const_cast<FakeView*>(this)->find(name);
  }
  bool type(std::string_view name, std::string_view text) override {
    behaviour_.run("type");
    auto& box = find(name);
    if (!box.enabled) return false;
    box.text = text == "99" || text == "12.7" ? "20" : std::string(text);
    return true;
  }
  bool append(std::string_view, std::string_view) override { return false; }
  bool backspace(std::string_view) override { return false; }
  bool click(std::string_view name) override {
    auto& button = find(name);
    if (!button.enabled || behaviour_.is("click", "greyed")) return false;
    if (button.kind == ControlKind::checkBox) {
      setOn(button.state != CheckBox::kOn);
    } else {
      find("Position").selected = 0;
      find("Top").text = behaviour_.is("click", "beyond") ? "25" : "5";
    }
    return true;
  }
  bool step(std::string_view, int) override { return false; }
  bool choose(std::string_view name, std::size_t index) override {
    auto& menu = find(name);
    if (!menu.enabled) return false;
    menu.selected = index;
    return true;
  }

  ControlState& find(std::string_view name) {
    for (auto& control : controls_) {
      if (control.outlet == name || (!control.name.empty() && control.name == name)) return control;
    }
    throw std::out_of_range("no such control");
  }
  void setOn(bool on) {
    find("Valid").state = on ? CheckBox::kOn : CheckBox::kOff;
    for (const char* name : {"Position", "Top", "RestoreDefault"}) find(name).enabled = on;
  }

 private:
  const Behaviour& behaviour_;
  ControlState controls_[5];
  void* label_ = nullptr;
};

class FakePanel : public PrintPanel {
 public:
  FakePanel(Behaviour behaviour, std::shared_ptr<HostCallback> host)
      : behaviour_(std::move(behaviour)), host_(std::move(host)), view_(behaviour_) {
    for (const auto& [keyword, value] :
         {std::pair{"FakeOn", "On"}, std::pair{"FakePosition", "Left"}, std::pair{"FakeTop", "5"}}) {
      if (!stored(keyword)) store(keyword, value);
    }
  }

  std::string panelName() override {
    behaviour_.run("panelName");
    return "Fake";
  }
  ObjectRef panelKind() override { return nullptr; }
  View* panelView() override {
    behaviour_.run("panelView");
    if (behaviour_.is("panelView", "other")) return &otherView_;
    return behaviour_.is("panelView", "none") ? nullptr : &view_;
  }
  Dictionary summaryInfo() override {
    behaviour_.run("summaryInfo");
    Dictionary summary{{"Upper", text(stored("FakeTop").value_or("-"))},
                       {"Place", text(stored("FakePosition").value_or("-"))}};
    if (stored("FakeOn") == "On") {
      const Array order{text("Upper"), text("Place")};
      summary.emplace(kSummaryDisplayOrderKey, std::make_shared<const Object>(Object::Value(order)));
    }
    return summary;
  }
  void willShow() override {
    behaviour_.run("willShow");
    view_.setOn(stored("FakeOn") == "On");
    view_.find("Top").text = stored("FakeTop").value_or("5");
    auto& menu = view_.find("Position");
    menu.selected.reset();
    for (std::size_t i = 0; i < menu.choices.size(); ++i) {
      if (menu.choices[i].value == stored("FakePosition")) menu.selected = i;
    }
  }
  bool shouldHide() override {
    behaviour_.run("shouldHide");
    return !behaviour_.is("shouldHide", "false");
  }
  bool shouldShowHelp() override { return true; }
  const std::vector<std::string>& supportedPPDOptionKeys() override {
    behaviour_.run("supportedPPDOptionKeys");
    return keys_;
  }
  std::vector<PanelSetting> settings() const override {
    behaviour_.run("settings");
    using enum PanelSetting::Kind;
    if (behaviour_.is("settings", "margin-alone"))
      return {{"FakeTop", "Top", "Upper", number, {}, -20, 20, "mm", value("FakeTop", "5")}};
    return {
        {"FakeOn", "Valid", "Fake", onOff, {{"On", "Ein"}, {"Off", "Aus"}}, 0, 0, "", value("FakeOn", "On")},
        {"FakePosition",
         "Position",
         "Place",
         choice,
         {{"Left", "Links"}, {"Right", "Rechts"}},
         0,
         0,
         "",
         value("FakePosition", "Left")},
        {"FakeTop", "Top", "Upper", number, {}, 0, 20, "mm", value("FakeTop", "5")}};
  }
  bool shouldPrint() override {
    behaviour_.run("shouldPrint");
    return !behaviour_.is("shouldPrint", "false");
  }
  bool saveValuesAndReturnError(std::string* error) override {
    behaviour_.run("saveValuesAndReturnError");
    store("FakeOn", view_.find("Valid").state == CheckBox::kOn ? "On" : "Off");
    const auto& menu = view_.find("Position");
    store("FakePosition", menu.selected ? menu.choices[*menu.selected].value : std::nullopt);
    store("FakeTop", behaviour_.is("saveValuesAndReturnError", "absent")
                         ? std::nullopt
                         : std::optional(view_.find("Top").text));
    if (!behaviour_.is("saveValuesAndReturnError", "false")) return true;
    *error = "the disk of the fake is full";
    return false;
  }
  bool restoreValuesAndReturnError(std::string* error) override {
    behaviour_.run("restoreValuesAndReturnError");
    if (!behaviour_.is("restoreValuesAndReturnError", "false")) return true;
    *error = "the fake has forgotten them";
    return false;
  }

 private:
  std::string value(std::string_view keyword, const char* otherwise) const {
    return stored(keyword).value_or(otherwise);
  }
  std::optional<std::string> stored(std::string_view keyword) const {
    std::optional<std::string> value;
    host_->printSettings()->PMPrintSettingsGetValue(keyword, value);
    return value;
  }
  void store(std::string_view keyword, const std::optional<std::string>& value) {
    host_->printSettings()->PMPrintSettingsSetValue(keyword, value, false);
  }

  Behaviour behaviour_;
  std::shared_ptr<HostCallback> host_;
  std::vector<std::string> keys_{"FakeOn", "FakePosition", "FakeTop"};
  View otherView_;
  FakeView view_;
};

class FakePlugin : public Plugin {
 public:
  bool initWithBundle(std::shared_ptr<Bundle> bundle) override {
    if (const auto path = bundle->pathForResource("behaviour", "txt")) {
      std::ifstream(*path) >> behaviour_.call >> behaviour_.misdeed;
    }
    behaviour_.run("initWithBundle");
    return !behaviour_.is("initWithBundle", "false");
  }
  std::unique_ptr<PanelList> PDEPanelsForType(std::optional<std::string_view> type,
                                              std::shared_ptr<HostCallback> hostInfo) override {
    behaviour_.run("PDEPanelsForType");
    if (type != kPrintDialogExtensionType || behaviour_.is("PDEPanelsForType", "none")) return nullptr;
    auto panels = std::make_unique<PanelList>();
    if (behaviour_.is("PDEPanelsForType", "null-panel")) panels->push_back(nullptr);
    if (behaviour_.call != "PDEPanelsForType")
      panels->push_back(std::make_unique<FakePanel>(behaviour_, std::move(hostInfo)));
    return panels;
  }

 private:
  Behaviour behaviour_;
};

}  // namespace

extern "C" {
[[gnu::visibility("default")]] void FakePrincipal(std::unique_ptr<Plugin>& made) noexcept {
  made = std::make_unique<FakePlugin>();
}
[[gnu::visibility("default")]] void MakesNothing(std::unique_ptr<Plugin>& /*made*/) noexcept {}
}
