#pragma once

#include <memory>

#include "adapters/linux/print_settings.hpp"
#include "plugin/plugin.hpp"
#include "tests/sequences/operation.hpp"

namespace tandemtrim::sequences {

/// The panel itself, called as a host calls it.
class System {
 public:
  System();

  /// Plays one call; observation() then shows its result.
  void play(const Operation& operation);
  [[nodiscard]] const Observation& observation() const { return observation_; }

 private:
  struct Host;
  struct Opened {
    std::unique_ptr<platform::PanelList> panels;
    // Null until a host requests it.
    platform::View* view = nullptr;
  };

  [[nodiscard]] std::string run(const Operation& operation);
  [[nodiscard]] std::string makePanel(const Operation& operation);
  [[nodiscard]] std::string ask(const Operation& operation, Opened& opened);

  std::array<std::shared_ptr<platform::linux::PrintSettings>, kJobs> jobs_;
  std::shared_ptr<Host> host_;
  std::array<Opened, kPanels> panels_;
  Observation observation_;
};

}  // namespace tandemtrim::sequences
