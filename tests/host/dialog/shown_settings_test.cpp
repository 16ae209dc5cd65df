#include "host/dialog/gtk/shown_settings.hpp"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>

namespace tandemtrim::host {
namespace {

class ShownSettings : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    gtk_init();
    Gtk::init_gtkmm_internals();
  }

  Gtk::PrintUnixDialog dialog{"Print"};
};

TEST_F(ShownSettings, KeepCollatingWhileThereIsOneCopy) {
  for (const bool isCollated : {true, false}) {
    auto settings = Gtk::PrintSettings::create();
    settings->set_collate(isCollated);
    dialog.set_settings(settings);
    EXPECT_EQ(shownSettings(dialog)->get_collate(), isCollated);
  }
}

// The dialog reads the settings at every change, so a leak would grow.
TEST_F(ShownSettings, AreFreedAfterUse) {
  gpointer kept = nullptr;
  {
    const auto settings = shownSettings(dialog);
    kept = settings->gobj();
    g_object_add_weak_pointer(G_OBJECT(kept), &kept);
    ASSERT_NE(kept, nullptr);
  }
  EXPECT_EQ(kept, nullptr);
}

}  // namespace
}  // namespace tandemtrim::host
