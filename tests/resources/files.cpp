#include "tests/resources/files.hpp"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "platform/property_list.hpp"

namespace tandemtrim::resources {

std::string tablePath(std::string_view language) {
  return kContents + "/Resources/" + std::string(language) + ".lproj/Localizable.strings";
}

std::string contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << "cannot read " << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

platform::Dictionary propertyListAt(const std::string& path) {
  const auto root = platform::dictionaryWithContentsOfFile(path);
  EXPECT_TRUE(root) << "no property list at " << path;
  return root ? *root : platform::Dictionary();
}

platform::ObjectRef settingAt(const platform::Dictionary& root, std::string_view mainKey,
                              std::string_view subKey) {
  const auto main = platform::find(root, mainKey);
  const auto* dictionary = main ? main->as<platform::Dictionary>() : nullptr;
  return dictionary == nullptr ? nullptr : platform::find(*dictionary, subKey);
}

std::string textAt(const platform::Dictionary& root, std::string_view mainKey, std::string_view subKey) {
  const auto object = settingAt(root, mainKey, subKey);
  const auto* text = object ? object->as<std::string>() : nullptr;
  EXPECT_TRUE(text != nullptr) << "no string at " << mainKey << "." << subKey;
  return text == nullptr ? std::string() : *text;
}

std::int64_t integerAt(const platform::Dictionary& root, std::string_view mainKey, std::string_view subKey) {
  const auto object = settingAt(root, mainKey, subKey);
  const auto* integer = object ? object->as<std::int64_t>() : nullptr;
  EXPECT_TRUE(integer != nullptr) << "no integer at " << mainKey << "." << subKey;
  return integer == nullptr ? 0 : *integer;
}

Finished run(const std::string& command) {
  std::FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {-1, "cannot run " + command};
  Finished finished{0, {}};
  std::array<char, 4096> buffer{};
  while (const auto size = std::fread(buffer.data(), 1, buffer.size(), pipe))
    finished.output.append(buffer.data(), size);
  finished.status = pclose(pipe);
  return finished;
}

}  // namespace tandemtrim::resources
