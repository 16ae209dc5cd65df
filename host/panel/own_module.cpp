#include "host/panel/own_module.hpp"

#include <array>
#include <filesystem>
#include <string_view>

#include <dlfcn.h>

#include "host/build_mark.hpp"
#include "host/panel/trust.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// Relative to the program's folder: where a build puts modules, and where an installation has them.
constexpr std::array<const char*, 2> kModuleFolders{"", "../" TANDEM_TRIM_LIBDIR "/tandem-trim"};
constexpr std::array<const char*, 2> kProgramFolders{"", "../" TANDEM_TRIM_LIBEXECDIR};

fs::path programsFolder() {
  std::error_code unreadable;
  return fs::read_symlink("/proc/self/exe", unreadable).parent_path();
}

OwnModule loadModuleAt(const fs::path& path) {
  if (auto fault = openToStrangers(path)) return {nullptr, *std::move(fault)};
  // Lazy for the system's libraries; our modules are linked to bind all symbols at once.
  void* const handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
  if (handle == nullptr) return {nullptr, dlerror()};
  const auto markOf = reinterpret_cast<MarkOfModule>(dlsym(handle, kMarkFunction));
  if (markOf != nullptr && std::string_view(markOf()) == kBuildMark) return {handle, {}};
  return {nullptr, path.lexically_normal().string() +
                       " is from another build than this program; install both together"};
}

}  // namespace

OwnModule loadOwnModule(const std::string& name) {
  std::error_code unreadable;
  const auto program = programsFolder();
  OwnModule module;
  for (const char* folder : kModuleFolders) {
    const auto path = program / folder / name;
    if (!fs::exists(path, unreadable)) continue;
    module = loadModuleAt(path);
    if (module.handle != nullptr) break;
  }
  return module;
}

OwnProgram findOwnProgram(const std::string& name) {
  std::error_code unreadable;
  for (const char* folder : kProgramFolders) {
    const auto path = programsFolder() / folder / name;
    if (!fs::exists(path, unreadable)) continue;
    if (auto fault = openToStrangers(path)) return {"", *std::move(fault)};
    return {path, ""};
  }
  return {};
}

void* exportedBy(const OwnModule& module, const char* function) { return dlsym(module.handle, function); }

}  // namespace tandemtrim::host
