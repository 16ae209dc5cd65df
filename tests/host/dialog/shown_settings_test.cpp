#include "host/dialog/gtk/shown_settings.hpp"

#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>

namespace tandemtrim::host {
namespace {

// The dialog reads the settings at every change, so a leak would grow.
TEST(ShownSettings, AreFreedAfterUse) {
  gtk_init();
  Gtk::init_gtkmm_internals();
  Gtk::PrintUnixDialog dialog("Print");
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
