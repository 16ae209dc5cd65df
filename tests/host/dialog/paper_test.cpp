#include "host/dialog/settings/paper.hpp"

#include <gmock/gmock.h>

#include "tests/host/dialog/sample_ppd.hpp"

namespace tandemtrim::host {
namespace {

using test::kPapers;
using test::SamplePpd;
using testing::DoubleNear;

constexpr double kRounding = 0.5;  // millimetres; the sample PPD has whole points

struct Size {
  std::string name;
  double width;
  double height;
};

class PaperNames : public testing::TestWithParam<Size> {
 protected:
  static void expectSize(const std::optional<Gtk::PaperSize>& paper) {
    ASSERT_TRUE(paper) << GetParam().name;
    EXPECT_THAT(paper->get_width(Gtk::Unit::MM), DoubleNear(GetParam().width, kRounding));
    EXPECT_THAT(paper->get_height(Gtk::Unit::MM), DoubleNear(GetParam().height, kRounding));
  }
};

class PaperNamesOfAPpd : public PaperNames {};

TEST_P(PaperNamesOfAPpd, HaveASizeAndAreSentAsPageSize) {
  const SamplePpd ppd(kPapers);
  const auto paper = paperNamed(GetParam().name, ppd.get());
  expectSize(paper);
  EXPECT_EQ(paperOption(*paper).keyword, "PageSize");
}

INSTANTIATE_TEST_SUITE_P(Paper, PaperNamesOfAPpd,
                         testing::Values(Size{"A4", 210, 297}, Size{"a4", 210, 297}, Size{"Blade", 100, 200},
                                         Size{"iso_a3_297x420mm", 297, 420}, Size{"Letter", 215.9, 279.4}));

class PaperNamesOfAnyPrinter : public PaperNames {};

TEST_P(PaperNamesOfAnyPrinter, HaveASizeAndAreSentAsMedia) {
  const auto paper = paperNamed(GetParam().name, nullptr);
  expectSize(paper);
  EXPECT_EQ(paperOption(*paper).keyword, "media");
}

INSTANTIATE_TEST_SUITE_P(Paper, PaperNamesOfAnyPrinter,
                         testing::Values(Size{"A4", 210, 297}, Size{"iso_a3_297x420mm", 297, 420},
                                         Size{"na_letter_8.5x11in", 215.9, 279.4},
                                         Size{"custom_blade_100x200mm", 100, 200}));

TEST(Paper, OfAnUnknownNameIsNotFound) {
  const SamplePpd ppd(kPapers);
  for (const char* name : {"", "Upper", "Glossy"}) {
    EXPECT_FALSE(paperNamed(name, nullptr)) << name;
    EXPECT_FALSE(paperNamed(name, ppd.get())) << name;
  }
}

TEST(Paper, OfAPpdIsSentByItsNameInThePpd) {
  const SamplePpd ppd(kPapers);
  EXPECT_EQ(paperOption(*paperNamed("blade", ppd.get())), (Option{"PageSize", "Blade"}));
  EXPECT_EQ(paperOption(*paperNamed("iso_a3_297x420mm", ppd.get())), (Option{"PageSize", "A3"}));
}

TEST(Paper, WithoutAPpdIsSentByItsStandardName) {
  EXPECT_EQ(paperOption(*paperNamed("A4", nullptr)), (Option{"media", "iso_a4_210x297mm"}));
}

TEST(Paper, OfACustomSizeInMillimetresIsSentInPoints) {
  const Gtk::PaperSize custom("blade", "Blade", 100, 200.5, Gtk::Unit::MM);
  EXPECT_EQ(paperOption(custom), (Option{"PageSize", "Custom.283.46x568.35"}));
}

TEST(Paper, IsTheLastOneThatTheOptionsName) {
  const SamplePpd ppd(kPapers);
  const auto nameOf = [&](const Options& options) {
    const auto paper = paperAskedFor(options, ppd.get());
    return paper ? paperOption(*paper).value : "none";
  };
  EXPECT_EQ(nameOf({{"PageSize", "A3"}}), "A3");
  EXPECT_EQ(nameOf({{"Media", "Upper,a3,Glossy"}}), "A3");
  EXPECT_EQ(nameOf({{"media", "A3"}, {"pagesize", "Blade"}}), "Blade");
  EXPECT_EQ(nameOf({{"PageSize", "A3"}, {"media", "Upper"}}), "A3");
  EXPECT_EQ(nameOf({{"sides", "A3"}, {"media", "Upper"}}), "none");
}

TEST(Paper, IsRemovedFromMediaButTraysAndTypesStay) {
  const SamplePpd ppd(kPapers);
  EXPECT_EQ(mediaWithoutPaper("a3,Upper,,Glossy", ppd.get()), "Upper,Glossy");
  EXPECT_EQ(mediaWithoutPaper("Blade", ppd.get()), "");
  EXPECT_EQ(mediaWithoutPaper("Blade", nullptr), "Blade");
}

}  // namespace
}  // namespace tandemtrim::host
