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
/// gettext reads: LANGUAGE, a list that counts unless the locale is C or POSIX, else the locale's own
/// language from LC_ALL, LC_MESSAGES or LANG. Encodings are left out. None for the C locale: the program's
/// texts as they were written.
std::vector<std::string> userLanguages(const Environment& environment = processEnvironment);

/// The tag of a locale's name ("sr_RS@latin": "sr-Latn-RS"), or none when the name stands for no language.
std::optional<std::string> languageTag(std::string_view localeName);

/// The localization of a language: itself or with its last parts left out ("fr-CA" takes "fr"); none when
/// neither is available.
std::optional<std::string> localizationOf(std::string language, const std::vector<std::string>& available);

/// The localization that fits the user best: that of the first language that has one, else the development
/// region's, else the first one. None when nothing is available.
std::optional<std::string> chooseLocalization(const std::vector<std::string>& available,
                                              const std::vector<std::string>& languages,
                                              const std::string& developmentRegion);

}  // namespace tandemtrim::platform::linux
