#include <gtest/gtest.h>

#include "tests/adapters/gtk/picture.hpp"
#include "tests/adapters/gtk/shown_panel.hpp"

namespace tandemtrim::test {
namespace {

struct Shot {
  const char* name;
  Circumstances circumstances;

  friend std::ostream& operator<<(std::ostream& out, const Shot& shot) { return out << shot.name; }
};

const std::map<std::string, std::string> kOff{{"MVTandemTrim", "Off"}};
const Shot kShots[] = {
    {"on", {}},
    {"off", {.stored = kOff}},
    {"german", {.language = "de"}},
    {"arabic", {.language = "ar"}},
    {"dark", {.dark = true}},
    {"dark-off", {.dark = true, .stored = kOff}},
    {"large-text", {.language = "de", .textScale = 2}},
};

class PanelPicture : public testing::TestWithParam<Shot> {};

TEST_P(PanelPicture, IsSaved) {
  ShownPanel shown(GetParam().circumstances);
  shown.user().awaitFrame();
  const Picture picture(GTK_WIDGET(gtk_widget_get_root(shown.root())));
  picture.save(std::string(PICTURES_FOLDER "/panel-") + GetParam().name + ".png");
  EXPECT_GT(picture.width(), 300);
}

INSTANTIATE_TEST_SUITE_P(All, PanelPicture, testing::ValuesIn(kShots));

}  // namespace
}  // namespace tandemtrim::test
