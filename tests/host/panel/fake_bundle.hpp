#pragma once

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::test {

struct FakeBundle {
  /// The function of the module that makes the plug-in; empty for an Info.plist without one.
  std::string principalClass = "FakePrincipal";
  /// "call misdeed", as the fake plug-in reads it; empty for a plug-in that works.
  std::string behaviour;
  /// Whether the bundle has its module.
  bool module = true;
};

/// Writes a bundle of this name and returns its path.
inline std::string writeBundle(const TemporaryFolder& folder, const std::string& name,
                               const FakeBundle& bundle = {}) {
  std::filesystem::remove_all(folder.path() / name);
  const std::filesystem::path contents = std::filesystem::path(name) / "Contents";
  std::string entries =
      "<key>CFBundleIdentifier</key><string>test.fake</string>"
      "<key>CFBundleExecutable</key><string>TandemTrim</string>"
      "<key>CFBundleDevelopmentRegion</key><string>en</string>"
      "<key>PrintOptionKeywords</key><array><string>FakeOn</string><string>FakePosition</string>"
      "<string>FakeTop</string></array>";
  if (!bundle.principalClass.empty())
    entries += "<key>NSPrincipalClass</key><string>" + bundle.principalClass + "</string>";
  folder.write(contents / "Info.plist",
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries +
                   "</dict></plist>\n");
  if (!bundle.behaviour.empty()) folder.write(contents / "Resources/behaviour.txt", bundle.behaviour);
  const auto modules = folder.path() / contents / "Linux";
  std::filesystem::create_directories(modules);
  if (bundle.module) std::filesystem::create_symlink(FAKE_MODULE, modules / "TandemTrim-memory");
  return (folder.path() / name).string();
}

}  // namespace tandemtrim::test
