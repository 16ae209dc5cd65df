// Prepares tests that need GTK's print settings but no screen.

#include <cstdlib>

#include <gmock/gmock.h>
#include <gtkmm/init.h>

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::test {
namespace {

class SettingsEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    // GLib reads the folders of settings once per process.
    setenv("XDG_STATE_HOME", state_.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", config_.path().c_str(), 1);
    // Prepares the C++ classes of GTK; gtk_init() would look for a screen.
    Gtk::init_gtkmm_internals();
  }

 private:
  TemporaryFolder state_;
  TemporaryFolder config_;
};

const auto* const settingsEnvironment = testing::AddGlobalTestEnvironment(new SettingsEnvironment);

}  // namespace
}  // namespace tandemtrim::test
