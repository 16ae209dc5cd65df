#include "host/cli/dialog_loader.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include <dlfcn.h>

#include "host/build_mark.hpp"
#include "host/cli/arguments/uses.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/panel/trust.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// Seen from the program's folder: where a build leaves the module, and where an installation has it.
constexpr std::array<const char*, 2> kModules{
    "dialog/tandem-trim-dialog", "../" TANDEM_TRIM_LIBDIR "/tandem-trim/dialog/tandem-trim-dialog"};

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

ShowDialog loadModule() {
  std::error_code unreadable;
  const auto folder = fs::read_symlink("/proc/self/exe", unreadable).parent_path();
  std::string reason;
  for (const char* module : kModules) {
    const auto path = folder / module;
    if (!fs::exists(path, unreadable)) continue;
    if (const auto fault = openToStrangers(path)) {
      reason = *fault;
      continue;
    }
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
      reason = dlerror();
      continue;
    }
    const auto markOf = reinterpret_cast<MarkOfModule>(dlsym(handle, kMarkFunction));
    const auto show = reinterpret_cast<ShowDialog>(dlsym(handle, kDialogFunction));
    const bool isOfThisBuild = markOf != nullptr && std::string_view(markOf()) == kBuildMark;
    if (isOfThisBuild && show != nullptr) return show;
    reason = path.lexically_normal().string() +
             " is of another build than this program, and has to be installed with it";
  }
  if (reason.empty()) {
    throw NoDialog("the print dialog is not installed (package tandem-trim-gtk)",
                   "; nothing was sent. Install that package, or print without the dialog by --no-dialog");
  }
  throw NoDialog("the print dialog cannot be shown: " + reason,
                 "; nothing was sent. Print without it by --no-dialog");
}

bool isFromFiles(const CommandLine& line) {
  return !line.files.empty() && std::ranges::count(line.files, "-") == 0;
}

}  // namespace

bool wantsDialog(const CommandLine& line) {
  if (line.dialog) return *line.dialog;
  return isFromFiles(line) && optionsBeside(line, Use::dialogUnasked).empty() &&
         (isSet("WAYLAND_DISPLAY") || isSet("DISPLAY"));
}

Printed showDialog(const CommandLine& line, const Report& report) {
  DialogResult result;
  loadModule()(line, report, result);
  if (result.noScreen)
    throw NoDialog("there is no screen to show the print dialog on", "; go on without one by --no-dialog");
  if (result.failure) throw Failure(*result.failure);
  return std::move(result.printed);
}

}  // namespace tandemtrim::host
