#include "host/portal/portal_variables.hpp"

#include <cstdlib>

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

TEST(PortalVariables, AreRemovedAndOthersStay) {
  setenv("GTK_USE_PORTAL", "1", 1);
  for (const auto& [flags, left] : {std::pair{"portals", ""},
                                    {"Portals,gl-disable", "gl-disable"},
                                    {"gl-disable:portals nograbs", "gl-disable,nograbs"},
                                    {"portals;nograbs\tPORTALS,portals-x", "nograbs,portals-x"}}) {
    setenv("GDK_DEBUG", flags, 1);
    removePortalVariables();
    EXPECT_STREQ(std::getenv("GDK_DEBUG"), left) << flags;
  }
  EXPECT_EQ(std::getenv("GTK_USE_PORTAL"), nullptr);
  unsetenv("GDK_DEBUG");
  removePortalVariables();
  EXPECT_EQ(std::getenv("GDK_DEBUG"), nullptr);
}

}  // namespace
}  // namespace tandemtrim::host
