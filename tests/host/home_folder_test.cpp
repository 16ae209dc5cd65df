#include "host/home_folder.hpp"

#include <cstdlib>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <pwd.h>
#include <unistd.h>

namespace {

// Whether the system has no entry for any user, as in a container that was started with a user's number.
thread_local bool areUsersUnknown = false;

}  // namespace

// Replaces the C library's.
extern "C" passwd* getpwuid(uid_t user) {
  static auto* const systems = reinterpret_cast<passwd* (*)(uid_t)>(dlsym(RTLD_NEXT, "getpwuid"));
  return areUsersUnknown ? nullptr : systems(user);
}

namespace tandemtrim::host {
namespace {

TEST(TheHomeFolder, IsTheUsersOwnUnlessHomeNamesAnother) {
  const std::string before = std::getenv("HOME");
  setenv("HOME", "/elsewhere", 1);
  EXPECT_EQ(homeFolder(), "/elsewhere");
  unsetenv("HOME");
  EXPECT_EQ(homeFolder(), getpwuid(getuid())->pw_dir);
  areUsersUnknown = true;
  EXPECT_EQ(homeFolder(), "/");
  areUsersUnknown = false;
  setenv("HOME", before.c_str(), 1);
}

}  // namespace
}  // namespace tandemtrim::host
