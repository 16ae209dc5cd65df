#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::platform::linux {

/// Looks up an environment variable; null when it is not set.
using Environment = std::function<const char*(const char* name)>;

/// The environment of this process.
const char* processEnvironment(const char* name);

/// The user's languages as tags ("pt-BR", "zh-Hans"), the preferred one first, from the variables that
/// gettext reads: the list in LANGUAGE, or, if that is empty, the locale in LC_ALL, LC_MESSAGES or LANG.
/// Encodings are left out. Empty when the locale is C or POSIX, even if LANGUAGE is set: the program's
/// texts are then not translated.
std::vector<std::string> userLanguages(const Environment& environment = processEnvironment);

/// The tag of a locale's name ("sr_RS@latin": "sr-Latn-RS"), or nullopt if the name is not that of a
/// language.
std::optional<std::string> languageTag(std::string_view localeName);

/// The available localization for a language: the language itself, or without its last parts ("fr" for
/// "fr-CA"); nullopt if there is no such localization.
std::optional<std::string> localizationOf(std::string language, const std::vector<std::string>& available);

/// The localization that fits the user best: that of the first language that has one, else the development
/// region's, else the first one. Nullopt if no localization is available.
std::optional<std::string> chooseLocalization(const std::vector<std::string>& available,
                                              const std::vector<std::string>& languages,
                                              const std::string& developmentRegion);

}  // namespace tandemtrim::platform::linux
