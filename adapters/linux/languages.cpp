#include "adapters/linux/languages.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace tandemtrim::platform::linux {
namespace {

using NamePair = std::pair<std::string_view, std::string_view>;

// A locale's name shows the script by a modifier or, for Chinese, by the region.
constexpr std::array kScriptOfModifier{NamePair{"latin", "Latn"}, NamePair{"cyrillic", "Cyrl"},
                                       NamePair{"devanagari", "Deva"}};
constexpr std::array kScriptOfChineseRegion{NamePair{"", "Hans"},   NamePair{"CN", "Hans"},
                                            NamePair{"SG", "Hans"}, NamePair{"TW", "Hant"},
                                            NamePair{"HK", "Hant"}, NamePair{"MO", "Hant"}};

template <class Table>
std::string_view lookUp(const Table& table, std::string_view name) {
  const auto* const found =
      std::find_if(table.begin(), table.end(), [name](const auto& pair) { return pair.first == name; });
  return found == table.end() ? std::string_view() : found->second;
}

// The part of the text after the first of these characters; empty if the text has no such character.
std::string_view partAfter(std::string_view text, std::string_view marks) {
  const auto offset = text.find_first_of(marks);
  return offset == std::string_view::npos ? std::string_view() : text.substr(offset + 1);
}

constexpr bool isUntranslated(std::string_view localeName) {
  return localeName == "C" || localeName == "POSIX";
}

std::string_view valueOf(const Environment& environment, const char* name) {
  const char* const value = environment(name);
  return value == nullptr ? std::string_view() : value;
}

// An empty variable counts as one that is not set.
std::string_view localeOf(const Environment& environment) {
  for (const auto* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (const auto value = valueOf(environment, name); !value.empty()) return value;
  }
  return "C";
}

}  // namespace

const char* processEnvironment(const char* name) { return std::getenv(name); }

std::optional<std::string> languageTag(std::string_view localeName) {
  const auto name = localeName.substr(0, localeName.find_first_of(".@"));
  const auto isTagCharacter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
  };
  if (name.empty() || isUntranslated(name) || !std::all_of(name.begin(), name.end(), isTagCharacter))
    return std::nullopt;

  std::string tag(name.substr(0, name.find_first_of("_-")));
  const auto region = partAfter(name, "_-");
  if (const auto script = tag == "zh" ? lookUp(kScriptOfChineseRegion, region) : ""; !script.empty()) {
    return tag.append("-").append(script);
  }
  if (const auto script = lookUp(kScriptOfModifier, partAfter(localeName, "@")); !script.empty()) {
    tag.append("-").append(script);
  }
  if (!region.empty()) tag.append("-").append(region);
  std::replace(tag.begin(), tag.end(), '_', '-');
  return tag;
}

std::vector<std::string> userLanguages(const Environment& environment) {
  const auto locale = localeOf(environment);
  if (isUntranslated(locale)) return {};
  auto list = valueOf(environment, "LANGUAGE");
  if (list.empty()) list = locale;

  std::vector<std::string> languages;
  while (!list.empty()) {
    const auto name = list.substr(0, list.find(':'));
    // C in the list means the program's own texts, which come before all later languages.
    if (isUntranslated(name)) break;
    if (auto tag = languageTag(name)) languages.push_back(std::move(*tag));
    list = partAfter(list, ":");
  }
  return languages;
}

std::optional<std::string> localizationOf(std::string language, const std::vector<std::string>& available) {
  while (!language.empty()) {
    if (std::find(available.begin(), available.end(), language) != available.end()) return language;
    const auto lastPart = language.rfind('-');
    language.resize(lastPart == std::string::npos ? 0 : lastPart);
  }
  return std::nullopt;
}

std::optional<std::string> chooseLocalization(const std::vector<std::string>& available,
                                              const std::vector<std::string>& languages,
                                              const std::string& developmentRegion) {
  for (const auto& language : languages) {
    if (auto localization = localizationOf(language, available)) return localization;
  }
  if (available.empty()) return std::nullopt;
  return localizationOf(developmentRegion, available).value_or(available.front());
}

}  // namespace tandemtrim::platform::linux
