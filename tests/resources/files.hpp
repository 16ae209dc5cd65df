#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::resources {

inline const std::string kContents = BUNDLE "/Contents";
inline const std::string kSettingInfo = kContents + "/Resources/TandemTrimKV2-SettingInfo.plist";

/// The languages of the panel.
inline constexpr std::array kLanguages{BUNDLE_LANGUAGES};

/// The path of a language's string table.
std::string tablePath(std::string_view language);

/// The bytes of the file at `path`; the test fails if it cannot be read.
std::string contentsOf(const std::string& path);

/// The property list at `path`; the test fails if it cannot be read.
platform::Dictionary propertyListAt(const std::string& path);

/// The object that `mainKey` and `subKey` lead to, or null.
platform::ObjectRef settingAt(const platform::Dictionary& root, std::string_view mainKey,
                              std::string_view subKey);

/// The string that `mainKey` and `subKey` lead to; the test fails if there is none.
std::string textAt(const platform::Dictionary& root, std::string_view mainKey, std::string_view subKey);

/// The integer that `mainKey` and `subKey` lead to; the test fails if there is none.
std::int64_t integerAt(const platform::Dictionary& root, std::string_view mainKey, std::string_view subKey);

struct Finished {
  int status;
  std::string output;
};

/// Runs a shell command to its end. `status` is 0 when it succeeded.
Finished run(const std::string& command);

}  // namespace tandemtrim::resources
