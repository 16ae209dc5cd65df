#include "host/home_folder.hpp"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace tandemtrim::host {

std::filesystem::path homeFolder() {
  if (const char* const home = std::getenv("HOME")) return home;
  const auto* const user = getpwuid(getuid());
  return user == nullptr ? "/" : user->pw_dir;
}

}  // namespace tandemtrim::host
