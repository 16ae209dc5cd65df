#include "host/portal/arguments.hpp"

#include <cmath>
#include <memory>

#include <gmock/gmock.h>

namespace tandemtrim::host {

void PrintTo(const Option& option, std::ostream* out) { *out << option.keyword << '=' << option.value; }

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Dictionary = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

// Reads a dictionary from GLib's text form.
Dictionary read(const std::string& text) {
  GError* wrong = nullptr;
  auto* const value = g_variant_parse(G_VARIANT_TYPE_VARDICT, text.c_str(), nullptr, nullptr, &wrong);
  if (value == nullptr) throw std::invalid_argument(text + ": " + wrong->message);
  return {value, g_variant_unref};
}

DialogRequest prepared(const std::string& settings, const std::string& pageSetup = "{}",
                       const std::string& options = "{}", const Caller& caller = {}) {
  return prepareRequest(caller, read(settings).get(), read(pageSetup).get(), read(options).get());
}

TEST(Suggestions, BecomeTheOptionsOfAJob) {
  EXPECT_THAT(prepared("{'n-copies': <'3'>, 'collate': <'true'>, 'reverse': <'true'>, 'page-set': <'odd'>, "
                       "'number-up': <'4'>, 'number-up-layout': <'rltb'>}")
                  .options,
              UnorderedElementsAre(Option{"copies", "3"}, Option{"Collate", "True"},
                                   Option{"OutputOrder", "Reverse"}, Option{"page-set", "odd"},
                                   Option{"number-up", "4"}, Option{"number-up-layout", "rltb"}));
}

TEST(Suggestions, OfEveryArrangementOfPagesBecomeTheOptionThatDoesTheSame) {
  const std::vector<Option> arrangements{
      {"number-up", "2"},           {"number-up", "4"},           {"number-up", "6"},
      {"number-up", "9"},           {"number-up", "16"},          {"number-up-layout", "lrtb"},
      {"number-up-layout", "lrbt"}, {"number-up-layout", "rltb"}, {"number-up-layout", "rlbt"},
      {"number-up-layout", "tblr"}, {"number-up-layout", "tbrl"}, {"number-up-layout", "btlr"},
      {"number-up-layout", "btrl"}, {"page-set", "even"},         {"page-set", "odd"},
      {"page-set", "all"}};
  for (const auto& arrangement : arrangements) {
    const auto& [keyword, value] = arrangement;
    EXPECT_THAT(prepared("{'" + keyword + "': <'" + value + "'>}").options, ElementsAre(arrangement));
  }
  EXPECT_THAT(prepared("{'collate': <'false'>, 'reverse': <'false'>}").options,
              ElementsAre(Option{"Collate", "False"}, Option{"OutputOrder", "Normal"}));
}

TEST(Suggestions, OfOneTo9999CopiesAreAccepted) {
  for (const char* copies : {"1", "9999"})
    EXPECT_THAT(prepared(std::string("{'n-copies': <'") + copies + "'>}").options,
                ElementsAre(Option{"copies", copies}));
}

TEST(Suggestions, CountPagesFromZero) {
  EXPECT_THAT(prepared("{'print-pages': <'ranges'>, 'page-ranges': <'0-1,4'>}").options,
              ElementsAre(Option{"page-ranges", "1-2,5"}));
}

TEST(Suggestions, MayEndAtThePageBeforeTheOneThatMeansTheEnd) {
  EXPECT_THAT(prepared("{'print-pages': <'ranges'>, 'page-ranges': <'0-0,4-4,2147483645'>}").options,
              ElementsAre(Option{"page-ranges", "1,5,2147483646"}));
  EXPECT_THAT(prepared("{'print-pages': <'ranges'>, 'page-ranges': <'2147483646'>}").options, IsEmpty());
}

TEST(Suggestions, OfPageRangesCountOnlyIfRangesAreChosen) {
  EXPECT_THAT(prepared("{'page-ranges': <'0-1'>}").options, IsEmpty());
}

TEST(Suggestions, AreLeftOutIfTheyAreWrong) {
  for (const char* settings :
       {"{'n-copies': <3>}", "{'n-copies': <'0'>}", "{'n-copies': <'-1'>}", "{'n-copies': <'10000'>}",
        "{'n-copies': <'99999999999999999999'>}", "{'n-copies': <'3 '>}", "{'collate': <true>}",
        "{'reverse': <'yes'>}", "{'page-set': <'some'>}", "{'number-up': <'3'>}", "{'number-up': <[1, 2]>}",
        "{'print-pages': <'ranges'>, 'page-ranges': <'3-1'>}",
        "{'print-pages': <'ranges'>, 'page-ranges': <'1,,2'>}", "{'print-pages': <'ranges'>}",
        "{'print-pages': <'ranges'>, 'page-ranges': <'-3'>}",
        "{'print-pages': <'ranges'>, 'page-ranges': <'0-x'>}",
        "{'print-pages': <'ranges'>, 'page-ranges': <'2147483647'>}", "{'n-copies': <<'3'>>}"})
    EXPECT_THAT(prepared(settings).options, IsEmpty()) << settings;
}

TEST(Suggestions, AreLeftOutIfTheyAreLongerThan255Bytes) {
  const auto settings = [](const std::string& rest) {
    std::string pages = rest;
    while (pages.size() < 255) pages += ",2";
    return "{'print-pages': <'ranges'>, 'page-ranges': <'" + pages + "'>}";
  };
  EXPECT_THAT(prepared(settings("0")).options, ElementsAre(testing::Field(&Option::keyword, "page-ranges")));
  EXPECT_THAT(prepared(settings("10")).options, IsEmpty());
}

TEST(Suggestions, AreNeverOptionsOfThePrinter) {
  const auto request = prepared(
      "{'cups-MVTopMargin': <'12'>, 'MVTopMargin': <'12'>, 'media-type': <'Glossy'>, 'output-uri': "
      "<'file:///etc/passwd'>, 'duplex': <'vertical'>, 'resolution': <'600'>}");
  EXPECT_THAT(request.options, IsEmpty());
}

TEST(Suggestions, NameAPrinterAndADocumentButNoPath) {
  const auto request = prepared("{'printer': <'Morva'>, 'output-basename': <'text.txt'>}");
  EXPECT_EQ(request.printer, "Morva");
  EXPECT_EQ(request.document, "text.txt");
  const auto path = prepared("{'printer': <'a/b'>, 'output-basename': <'../text.txt'>}");
  EXPECT_EQ(path.printer, std::nullopt);
  EXPECT_EQ(path.document, "");
  EXPECT_EQ(prepared("{'printer': <''>}").printer, std::nullopt);
  const auto control = prepared("{'printer': <'a\\nb'>, 'output-basename': <'a\\u0007'>}");
  EXPECT_EQ(control.printer, std::nullopt);
  EXPECT_EQ(control.document, "");
}

TEST(Suggestions, ScaleWithinLimits) {
  EXPECT_EQ(prepared("{'scale': <'75'>}").scale, 75);
  EXPECT_EQ(prepared("{'scale': <'70.5'>}").scale, 70.5);
  EXPECT_EQ(prepared("{'scale': <'1'>}").scale, 1);
  EXPECT_EQ(prepared("{'scale': <'1000'>}").scale, 1000);
  for (const char* wrong :
       {"'0'", "'0.9'", "'1000.5'", "'1001'", "'nan'", "'inf'", "'-5'", "75.0", "'7,5'", "''"})
    EXPECT_EQ(prepared(std::string("{'scale': <") + wrong + ">}").scale, std::nullopt) << wrong;
}

TEST(PageSetup, BecomesPaperAndOrientation) {
  EXPECT_THAT(prepared("{}", "{'Width': <210.0>, 'Height': <297.0>, 'Orientation': <'landscape'>}").options,
              ElementsAre(Option{"media", "iso_a4_210x297mm"}, Option{"orientation-requested", "4"}));
}

TEST(PageSetup, MayTurnThePageEachWay) {
  const std::vector<std::pair<std::string, std::string>> ways{
      {"portrait", "3"}, {"landscape", "4"}, {"reverse_landscape", "5"}, {"reverse_portrait", "6"}};
  for (const auto& [way, value] : ways)
    EXPECT_THAT(prepared("{}", "{'Orientation': <'" + way + "'>}").options,
                ElementsAre(Option{"orientation-requested", value}));
}

TEST(PageSetup, WithoutAValidSizeLeavesThePaperToThePrinter) {
  for (const char* setup : {"{}", "{'Width': <210.0>}", "{'Width': <0.0>, 'Height': <297.0>}",
                            "{'Width': <-210.0>, 'Height': <297.0>}", "{'Width': <1e300>, 'Height': <297.0>}",
                            "{'Width': <210>, 'Height': <297>}", "{'Width': <'210'>, 'Height': <297.0>}",
                            "{'Orientation': <'sideways'>}"})
    EXPECT_THAT(prepared("{}", setup).options, IsEmpty()) << setup;
  const double notANumber = std::nan("");
  EXPECT_THAT(
      prepareRequest(
          {}, read("{}").get(),
          Dictionary(g_variant_ref_sink(dictionaryOf({{"Width", notANumber}, {"Height", notANumber}})),
                     g_variant_unref)
              .get(),
          read("{}").get())
          .options,
      IsEmpty());
}

TEST(PageSetup, OfAnOddSizeWithinTheLimitsIsACustomPaper) {
  for (const char* setup : {"{'Width': <10.0>, 'Height': <10.0>}", "{'Width': <5000.0>, 'Height': <5000.0>}"})
    EXPECT_THAT(prepared("{}", setup).options, ElementsAre(testing::Field(&Option::keyword, "media")))
        << setup;
  for (const char* setup : {"{'Width': <9.9>, 'Height': <20.0>}", "{'Width': <20.0>, 'Height': <5001.0>}"})
    EXPECT_THAT(prepared("{}", setup).options, IsEmpty()) << setup;
}

TEST(OptionsOfARequest, SayWhatTheProgramCanDo) {
  const auto request =
      prepared("{}", "{}",
               "{'modal': <false>, 'accept_label': <'_Export'>, 'has_current_page': <true>, "
               "'has_selected_pages': <true>, 'supported_output_file_formats': <['ps', 'pdf']>}");
  EXPECT_FALSE(request.isModal);
  EXPECT_EQ(request.acceptLabel, "_Export");
  EXPECT_TRUE(request.hasCurrentPage);
  EXPECT_TRUE(request.hasSelection);
  EXPECT_THAT(request.formats, ElementsAre(FileFormat::pdf, FileFormat::postScript));
}

TEST(OptionsOfARequest, HaveDefaultsIfTheyAreMissingOrOfAnotherType) {
  for (const char* options : {"{}",
                              "{'modal': <'no'>, 'accept_label': <7>, 'has_current_page': <1>, "
                              "'has_selected_pages': <'yes'>, 'supported_output_file_formats': <'pdf'>}"}) {
    const auto request = prepared("{}", "{}", options);
    EXPECT_TRUE(request.isModal);
    EXPECT_EQ(request.acceptLabel, "");
    EXPECT_FALSE(request.hasCurrentPage);
    EXPECT_FALSE(request.hasSelection);
    EXPECT_THAT(request.formats, ElementsAre(FileFormat::pdf, FileFormat::postScript, FileFormat::svg));
  }
}

TEST(Formats, IncludeSvgOnlyTogetherWithBothOthers) {
  EXPECT_THAT(prepared("{}", "{}", "{'supported_output_file_formats': <['svg', 'pdf']>}").formats,
              ElementsAre(FileFormat::pdf));
  EXPECT_THAT(
      prepared("{}", "{}", "{'supported_output_file_formats': <['svg', 'ps', 'pdf', 'png']>}").formats,
      ElementsAre(FileFormat::pdf, FileFormat::postScript, FileFormat::svg));
}

TEST(Formats, ThatAreAllUnknownLeaveNoFormat) {
  EXPECT_THAT(prepared("{}", "{}", "{'supported_output_file_formats': <['png']>}").formats, IsEmpty());
}

TEST(Caller, IsNamedInOneShortLine) {
  const std::string longText(100'000, 'x');
  const auto request = prepared("{}", "{}", "{}", {longText, longText, "two\nlines\x1b[31m" + longText});
  EXPECT_EQ(request.application, "");
  EXPECT_EQ(request.parent, "");
  EXPECT_LT(request.title.size(), 220U);
  EXPECT_EQ(request.title.find('\n'), std::string::npos);
  EXPECT_EQ(request.title.find('\x1b'), std::string::npos);
}

TEST(Caller, IsNamedBy255BytesAtMost) {
  const std::string longest(255, 'x');
  EXPECT_EQ(prepared("{}", "{}", "{}", {longest, longest, ""}).application, longest);
  EXPECT_EQ(prepared("{}", "{}", "{}", {longest, longest, ""}).parent, longest);
  EXPECT_EQ(prepared("{}", "{}", "{}", {longest + "x", longest + "x", ""}).application, "");
  EXPECT_EQ(prepared("{}", "{}", "{}", {longest + "x", longest + "x", ""}).parent, "");
}

// The settings of an earlier choice are in the hidden dialog.
TEST(RequestForADocument, HasTheProgramsNameWindowTitleAndLabel) {
  const Caller caller{"org.example.Editor", "x11:1", "Letter"};
  const auto request =
      printRequest(caller, read("{'modal': <false>, 'accept_label': <'_Send'>, 'token': <uint32 7>}").get());
  EXPECT_EQ(request.application, "org.example.Editor");
  EXPECT_EQ(request.parent, "x11:1");
  EXPECT_EQ(request.title, "Letter");
  EXPECT_EQ(request.acceptLabel, "_Send");
  EXPECT_FALSE(request.isModal);
  EXPECT_THAT(request.options, IsEmpty());
  EXPECT_TRUE(printRequest(caller, read("{}").get()).isModal);
}

TEST(TokenInOptions, IsReadFromAnUnsigned32BitNumberOnly) {
  EXPECT_EQ(tokenIn(read("{'token': <uint32 7>}").get()), 7U);
  for (const char* other : {"{}", "{'token': <7>}", "{'token': <'7'>}", "{'token': <uint64 7>}"})
    EXPECT_EQ(tokenIn(read(other).get()), 0U) << other;
}

TEST(Results, HaveTextsAsStringsAndLengthsAsDoubles) {
  const Dictionary results(
      g_variant_ref_sink(dictionaryOf({{"n-copies", std::string("1")}, {"Width", 210.0}})), g_variant_unref);
  EXPECT_EQ(std::string(Dictionary(g_variant_lookup_value(results.get(), "n-copies", G_VARIANT_TYPE_STRING),
                                   g_variant_unref)
                            ? "s"
                            : ""),
            "s");
  const Dictionary width(g_variant_lookup_value(results.get(), "Width", G_VARIANT_TYPE_DOUBLE),
                         g_variant_unref);
  ASSERT_TRUE(width);
  EXPECT_EQ(g_variant_get_double(width.get()), 210.0);
}

}  // namespace
}  // namespace tandemtrim::host
