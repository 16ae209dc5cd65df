#include "host/dialog/texts.hpp"

#include <filesystem>

#include <dlfcn.h>

#include "platform/linux/bundle.hpp"

namespace tandemtrim::host {
namespace {

// Beside the module that this code is part of.
std::string bundlePath() {
  Dl_info module{};
  if (dladdr(reinterpret_cast<const void*>(&bundlePath), &module) == 0) return {};
  return std::filesystem::absolute(module.dli_fname).parent_path() / "Dialog.bundle";
}

std::string replaced(std::string text, std::string_view token, std::string_view value) {
  if (const auto at = text.find(token); at != std::string::npos) text.replace(at, token.size(), value);
  return text;
}

}  // namespace

std::string localized(std::string_view text) {
  static const auto bundle = [] {
    std::string reason;
    return platform::linux::Bundle::open(bundlePath(), reason);
  }();
  return bundle ? bundle->localizedStringForKey(text, "", std::nullopt) : std::string(text);
}

// The value goes in last, since it may hold anything.
std::string illegalValuesText(const std::vector<IllegalValue>& values) {
  std::string lines;
  for (const auto& value : values) {
    auto line = replaced(localized(kIllegalValueText), "[name]", value.name);
    line = replaced(std::move(line), "[allowed]", value.allowed);
    lines += (lines.empty() ? "" : "\n") + replaced(std::move(line), "[value]", value.value);
  }
  return lines;
}

}  // namespace tandemtrim::host
