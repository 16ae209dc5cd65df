#include "adapters/linux/languages.hpp"

#include <cstdlib>
#include <map>

#include <gmock/gmock.h>

namespace tandemtrim::platform::linux {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Variables = std::map<std::string, std::string>;

std::vector<std::string> languagesWith(const Variables& variables) {
  return userLanguages([&variables](const char* name) {
    const auto found = variables.find(name);
    return found == variables.end() ? nullptr : found->second.c_str();
  });
}

TEST(UserLanguages, ReadsTheLocaleFromTheFirstVariableThatIsSet) {
  EXPECT_THAT(languagesWith({{"LC_ALL", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LANG", "it_IT"}}),
              ElementsAre("de-DE"));
  EXPECT_THAT(languagesWith({{"LC_MESSAGES", "fr_FR"}, {"LANG", "it_IT"}}), ElementsAre("fr-FR"));
  EXPECT_THAT(languagesWith({{"LANG", "it_IT"}}), ElementsAre("it-IT"));
  EXPECT_THAT(languagesWith({{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "it"}}), ElementsAre("it"));
}

TEST(UserLanguages, PrefersTheListInLanguageToTheLocale) {
  EXPECT_THAT(languagesWith({{"LANGUAGE", "ja:pt_BR:de"}, {"LC_ALL", "en_US.UTF-8"}}),
              ElementsAre("ja", "pt-BR", "de"));
  EXPECT_THAT(languagesWith({{"LANGUAGE", ":ja::de:"}, {"LANG", "en_US"}}), ElementsAre("ja", "de"));
  EXPECT_THAT(languagesWith({{"LANGUAGE", "ja^de:fr"}, {"LANG", "en_US"}}), ElementsAre("fr"));
  EXPECT_THAT(languagesWith({{"LANGUAGE", ""}, {"LANG", "en_US"}}), ElementsAre("en-US"));
}

TEST(UserLanguages, IgnoresTheListUnderTheCLocale) {
  for (const char* locale : {"C", "POSIX"}) {
    EXPECT_THAT(languagesWith({{"LANGUAGE", "ar"}, {"LANG", locale}}), IsEmpty()) << locale;
  }
  EXPECT_THAT(languagesWith({{"LANGUAGE", "ar"}, {"LC_ALL", "C"}, {"LANG", "de_DE"}}), IsEmpty());
  EXPECT_THAT(languagesWith({{"LANGUAGE", "ar"}}), IsEmpty());
  EXPECT_THAT(languagesWith({}), IsEmpty());
}

TEST(UserLanguages, ReadsTheListUnderTheCLocaleWithAnEncoding) {
  EXPECT_THAT(languagesWith({{"LANGUAGE", "ar"}, {"LANG", "C.UTF-8"}}), ElementsAre("ar"));
  EXPECT_THAT(languagesWith({{"LANG", "C.UTF-8"}}), IsEmpty());
}

TEST(UserLanguages, EndsTheListAtTheCLocale) {
  EXPECT_THAT(languagesWith({{"LANGUAGE", "fr:C:de"}, {"LANG", "de_DE"}}), ElementsAre("fr"));
  EXPECT_THAT(languagesWith({{"LANGUAGE", "POSIX:de"}, {"LANG", "de_DE"}}), IsEmpty());
}

TEST(UserLanguages, ReadsTheEnvironmentOfTheProcess) {
  ASSERT_NE(processEnvironment("PATH"), nullptr);
  EXPECT_STREQ(processEnvironment("PATH"), std::getenv("PATH"));
  EXPECT_EQ(processEnvironment("TANDEM_TRIM_TEST_NOT_SET"), nullptr);
}

struct Tagging {
  const char* localeName;
  std::optional<std::string> tag;
};

TEST(LanguageTag, MapsEncodingsRegionsAndScripts) {
  const Tagging taggings[] = {
      {"de", "de"},
      {"de_DE.UTF-8@euro", "de-DE"},
      {"de_DE@euro", "de-DE"},
      {"de.UTF-8", "de"},
      {"pt_BR", "pt-BR"},
      {"pt-BR", "pt-BR"},
      {"es_419", "es-419"},
      {"zh", "zh-Hans"},
      {"zh_CN.UTF-8", "zh-Hans"},
      {"zh_SG", "zh-Hans"},
      {"zh_TW.Big5", "zh-Hant"},
      {"zh_HK", "zh-Hant"},
      {"zh_MO", "zh-Hant"},
      {"zh_Hant_TW", "zh-Hant-TW"},
      {"sr@latin", "sr-Latn"},
      {"sr_RS.UTF-8@latin", "sr-Latn-RS"},
      {"uz_UZ@cyrillic", "uz-Cyrl-UZ"},
      {"ks_IN@devanagari", "ks-Deva-IN"},
      {"ca_ES@valencia", "ca-ES"},
      {"sr_RS.UTF-8^latin", "sr-RS"},
  };
  for (const auto& [name, tag] : taggings) EXPECT_EQ(languageTag(name), tag) << name;
}

TEST(LanguageTag, DoesNotExistForANameWithoutALanguage) {
  for (const char* name : {"", "C", "POSIX", "C.UTF-8", ".UTF-8", "@euro", "../en", "/etc/locale", "de DE",
                           "de~DE", "d\xC3\xA9"}) {
    EXPECT_EQ(languageTag(name), std::nullopt) << name;
  }
}

TEST(LanguageTag, IsReadFromLettersDigitsDashesAndUnderscoresOnly) {
  std::string taken;
  std::string ending;
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    const auto tag = languageTag(std::string{'d', character, 'e'});
    if (tag) (tag == "d" ? ending : taken) += character;
  }
  EXPECT_EQ(taken, "-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(ending, ".@");
}

struct Choice {
  std::vector<std::string> available;
  std::vector<std::string> languages;
  std::string developmentRegion;
  std::optional<std::string> localization;
};

TEST(ChooseLocalization, TakesTheFirstLanguageThatIsAvailableInAnyForm) {
  const std::vector<std::string> all{"ar", "de", "en", "fr", "pt-BR", "sr", "zh-Hans"};
  const Choice choices[] = {
      {all, {"fr"}, "en", "fr"},
      {all, {"fr-CA", "ar"}, "en", "fr"},
      {all, {"en-US", "de"}, "de", "en"},
      {all, {"ja", "de-AT"}, "en", "de"},
      {all, {"pt-BR"}, "en", "pt-BR"},
      {all, {"pt-PT", "ar"}, "en", "ar"},
      {all, {"sr-Latn-RS"}, "en", "sr"},
      {all, {"zh-Hans"}, "en", "zh-Hans"},
      {all, {"zh-Hant"}, "en", "en"},
      {{"zh", "en"}, {"zh-Hans"}, "en", "zh"},
      {{"fr", "fr-CA"}, {"fr-CA"}, "en", "fr-CA"},
  };
  for (const auto& choice : choices) {
    EXPECT_EQ(chooseLocalization(choice.available, choice.languages, choice.developmentRegion),
              choice.localization)
        << testing::PrintToString(choice.languages);
  }
}

TEST(ChooseLocalization, FallsBackToTheDevelopmentRegionThenToAnyLanguage) {
  EXPECT_EQ(chooseLocalization({"ar", "en"}, {}, "en"), "en");
  EXPECT_EQ(chooseLocalization({"ar", "en"}, {"ja"}, "en-US"), "en");
  EXPECT_EQ(chooseLocalization({"ar", "de"}, {"ja"}, "en"), "ar");
  EXPECT_EQ(chooseLocalization({"ar", "de"}, {}, ""), "ar");
  EXPECT_EQ(chooseLocalization({}, {"ja"}, "en"), std::nullopt);
}

}  // namespace
}  // namespace tandemtrim::platform::linux
