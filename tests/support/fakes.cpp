#include "tests/support/fakes.hpp"

#include <stdexcept>

#include <cups/ppd.h>

namespace tandemtrim::test {
namespace {

std::shared_ptr<ppd_file_s> openPpd(const std::optional<std::string>& path) {
  if (!path) return nullptr;
  std::shared_ptr<ppd_file_s> opened(ppdOpenFile(path->c_str()), ppdClose);
  if (!opened) throw std::runtime_error("libcups does not read " + *path);
  return opened;
}

}  // namespace

FakeBundle::FakeBundle(const Scene& scene)
    : settingInfoPath(scene.writeBundle() + "/Contents/Resources/TandemTrimKV2-SettingInfo.plist"),
      strings(scene.strings.begin(), scene.strings.end()) {}

FakeBundle::~FakeBundle() {
  if (onRelease) onRelease();
}

std::optional<std::string> FakeBundle::pathForResource(std::string_view name, std::string_view type) const {
  log.push_back(std::string(name) + '.' + std::string(type));
  return settingInfoPath;
}

std::string FakeBundle::localizedStringForKey(std::string_view key, std::string_view value,
                                              std::optional<std::string_view> table) const {
  log.push_back("text of \"" + std::string(key) + "\" or \"" + std::string(value) + '"' +
                (table ? " in " + std::string(*table) : ""));
  const auto entry = strings.find(key);
  return entry == strings.end() ? std::string(key) : entry->second;
}

platform::OSStatus FakePrintSettings::PMPrintSettingsGetValue(std::string_view key,
                                                              std::optional<std::string>& value) const {
  log.push_back("get " + std::string(key));
  const auto entry = values.find(key);
  value = entry == values.end() ? std::nullopt : std::optional(entry->second);
  return readStatus;
}

platform::OSStatus FakePrintSettings::PMPrintSettingsSetValue(std::string_view key,
                                                              const std::optional<std::string>& value,
                                                              bool locked) {
  const std::string name(key);
  log.push_back((value ? "set " + name + '=' + *value : "remove " + name) + (locked ? " locked" : ""));
  if (writeStatus != platform::kNoError) return writeStatus;
  if (value) {
    values[name] = *value;
  } else {
    values.erase(name);
  }
  return platform::kNoError;
}

FakeCallback::FakeCallback(const Scene& scene) : ppd(openPpd(scene.writePpd())) {
  settings.values.insert(scene.stored.begin(), scene.stored.end());
}

FakeCallback::~FakeCallback() {
  if (onRelease) onRelease();
}

}  // namespace tandemtrim::test
