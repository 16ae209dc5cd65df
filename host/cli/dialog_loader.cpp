#include "host/cli/dialog_loader.hpp"

#include <algorithm>
#include <cstdlib>
#include <future>
#include <utility>

#include "host/cli/arguments/uses.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/panel/own_module.hpp"

namespace tandemtrim::host {
namespace {

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

OwnModule loadPart(const std::string& name) {
  auto module = loadOwnModule("dialog/" + name);
  if (module.handle != nullptr) return module;
  if (module.fault.empty()) {
    throw NoDialog("the print dialog is not installed (package tandem-trim-gtk)",
                   "; nothing was sent. Install that package, or print with --no-dialog");
  }
  throw NoDialog("the print dialog cannot be shown: " + module.fault,
                 "; nothing was sent. Print with --no-dialog");
}

template <class Function>
Function functionOf(const OwnModule& module, const char* name) {
  return reinterpret_cast<Function>(exportedBy(module, name));
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
  const auto toolkit = loadPart("tandem-trim-toolkit");
  const auto start = functionOf<StartToolkit>(toolkit, kStartFunction);
  const auto prepare = functionOf<PrepareToolkit>(toolkit, kPrepareFunction);
  const bool hasScreen = start(line.server ? line.server->c_str() : nullptr);
  auto loading = std::async(std::launch::async, [] { return loadPart("tandem-trim-dialog"); });
  if (hasScreen) prepare();
  const auto dialog = loading.get();
  if (!hasScreen)
    throw NoDialog("there is no screen to show the print dialog on", "; print with --no-dialog");
  DialogResult result;
  functionOf<ShowDialog>(dialog, kDialogFunction)(line, report, result);
  if (result.failure) throw Failure(*result.failure);
  return std::move(result.printed);
}

}  // namespace tandemtrim::host
