#include "adapters/memory/panel.hpp"
#include "tests/conformance/linux_platform.hpp"

namespace tandemtrim::conformance {
namespace {

class MemoryPanel : public LinuxPanel {
 public:
  using LinuxPanel::LinuxPanel;

  Look look(const std::string& outlet) override {
    const auto state = view().control(outlet);
    Look look{.text = state.text,
              .enabled = state.enabled,
              .color = state.color == platform::Color::blackColor ? "blackColor" : "lightGrayColor",
              .state = state.state,
              .chosen = {},
              .min = state.min,
              .max = state.max};
    if (state.selected) look.chosen = state.choices.at(*state.selected).value;
    return look;
  }
  std::vector<Choice> choices(const std::string& menu) override {
    std::vector<Choice> choices;
    for (const auto& choice : view().control(menu).choices) choices.push_back({choice.title, choice.value});
    return choices;
  }
  bool replaceText(const std::string& outlet, const std::string& text) override {
    return view().type(outlet, text);
  }
  bool replaceTextAtOnce(const std::string& outlet, const std::string& text) override {
    return replaceText(outlet, text);
  }
  bool type(const std::string& outlet, const std::string& keys) override {
    bool live = true;
    for (const char key : keys) live = view().append(outlet, std::string(1, key)) && live;
    return live;
  }
  bool backspace(const std::string& outlet) override { return view().backspace(outlet); }
  bool click(const std::string& outlet) override { return view().click(outlet); }
  bool step(const std::string& outlet, int steps) override { return view().step(outlet, steps); }
  bool choose(const std::string& outlet, const std::string& value) override {
    const auto offered = choices(outlet);
    std::size_t index = 0;
    while (offered.at(index).value != value) ++index;
    return view().choose(outlet, index);
  }
  void setMixed(const std::string& outlet) override { view().setMixed(outlet); }

 private:
  platform::memory::Panel& view() { return dynamic_cast<platform::memory::Panel&>(*panel().panelView()); }
};

}  // namespace

std::unique_ptr<Dialog> openDialog(const Scene& scene) {
  return std::make_unique<LinuxDialog<MemoryPanel>>(scene);
}

std::size_t longestText() { return std::string::npos; }

}  // namespace tandemtrim::conformance
