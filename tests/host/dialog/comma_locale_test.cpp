#include <clocale>
#include <cstdlib>

#include <gmock/gmock.h>

#include "host/dialog/settings/paper.hpp"

namespace tandemtrim::host {
namespace {

// A locale that writes numbers with a comma, built for the tests.
class PaperInACommaLocale : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("LOCPATH", LOCALES, 1); }
  static void TearDownTestSuite() { unsetenv("LOCPATH"); }

  void SetUp() override {
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(PaperInACommaLocale, OfACustomSizeIsSentWithPoints) {
  const Gtk::PaperSize paper("blade", "Blade", 100.5, 200.25, Gtk::Unit::MM);
  EXPECT_EQ(paperOption(paper), (Option{"PageSize", "Custom.284.88x567.64"}));
}

}  // namespace
}  // namespace tandemtrim::host
