#include "tests/support/comma_locale.hpp"

#include "host/dialog/settings/paper.hpp"

namespace tandemtrim::host {
namespace {

using PaperInACommaLocale = test::CommaLocaleTest;

TEST_F(PaperInACommaLocale, OfACustomSizeIsSentWithDecimalPoints) {
  const Gtk::PaperSize paper("blade", "Blade", 100.5, 200.25, Gtk::Unit::MM);
  EXPECT_EQ(paperOption(paper), (Option{"PageSize", "Custom.284.88x567.64"}));
}

}  // namespace
}  // namespace tandemtrim::host
