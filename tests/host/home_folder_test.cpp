#include "host/home_folder.hpp"

#include <cstdlib>

#include <gmock/gmock.h>
#include <pwd.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

TEST(TheHomeFolder, IsTheUsersOwnUnlessHomeNamesAnother) {
  const std::string before = std::getenv("HOME");
  setenv("HOME", "/elsewhere", 1);
  EXPECT_EQ(homeFolder(), "/elsewhere");
  unsetenv("HOME");
  EXPECT_EQ(homeFolder(), getpwuid(getuid())->pw_dir);
  setenv("HOME", before.c_str(), 1);
}

}  // namespace
}  // namespace tandemtrim::host
