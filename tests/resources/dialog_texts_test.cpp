#include <set>

#include <gmock/gmock.h>

#include "host/dialog/texts.hpp"
#include "platform/linux/strings_table.hpp"
#include "tests/resources/files.hpp"

namespace tandemtrim::resources {
namespace {

class DialogTexts : public testing::TestWithParam<const char*> {
 protected:
  platform::linux::StringsTable table =
      platform::linux::parseStringsTable(
          contentsOf(std::string(DIALOG_TEXTS) + '/' + GetParam() + ".lproj/Localizable.strings"))
          .value_or(platform::linux::StringsTable());
};

TEST_P(DialogTexts, AreThereForEveryKeyAndForNoOther) {
  EXPECT_EQ(table.size(), host::kTexts.size());
  for (const char* key : host::kTexts) {
    const auto text = table.find(key);
    ASSERT_NE(text, table.end()) << key;
    EXPECT_NE(text->second, "") << key;
  }
}

TEST_P(DialogTexts, NameWhatIsWrongWithAValueOnce) {
  const auto& text = table.at(host::kIllegalValueText);
  for (const char* token : {"[name]", "[value]", "[allowed]"}) {
    EXPECT_NE(text.find(token), std::string::npos) << token;
    EXPECT_EQ(text.find(token), text.rfind(token)) << token;
  }
}

INSTANTIATE_TEST_SUITE_P(In, DialogTexts, testing::ValuesIn(kLanguages), [](const auto& language) {
  std::string name = language.param;
  std::erase(name, '-');
  return name;
});

}  // namespace
}  // namespace tandemtrim::resources
