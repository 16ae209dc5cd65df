#pragma once

#include <memory>

#include "adapters/linux/print_settings.hpp"
#include "plugin/plugin.hpp"
#include "tests/sequences/operation.hpp"

namespace tandemtrim::sequences {

/// The panel itself, asked as a host asks it.
class System {
 public:
  System();

  /// Plays one call and gives what is to be seen of it.
  void play(const Operation& operation);
  [[nodiscard]] const Sight& sight() const { return sight_; }

 private:
  struct Host;
  struct Opened {
    std::unique_ptr<platform::PanelList> panels;
    // Null until a host has asked for it.
    platform::View* view = nullptr;
  };

  [[nodiscard]] std::string run(const Operation& operation);
  [[nodiscard]] std::string makePanel(const Operation& operation);
  [[nodiscard]] std::string ask(const Operation& operation, Opened& opened);

  std::array<std::shared_ptr<platform::linux::PrintSettings>, kJobs> jobs_;
  std::shared_ptr<Host> host_;
  std::array<Opened, kPanels> panels_;
  Sight sight_;
};

}  // namespace tandemtrim::sequences
