#include "host/job/lpoptions.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

const DestinationName kMorva{"Morva", std::nullopt};
const DestinationName kDraft{"Morva", "draft"};
constexpr const char* kOthers =
    "# a comment\nDest Elsewhere/Copy  x=1 \r\nPolicy what?\nDest Morva/draughts a=b\n\n";

Options allIn(const std::string& text, const std::optional<DestinationName>& destination) {
  return savedOptions(std::span(&text, 1), destination, SavedLines::all);
}

TEST(SavedOptions, AreAppendedAsASeparateLine) {
  EXPECT_EQ(withSavedOptions("", kMorva, {{"a", "b"}, {"note", "two words"}}),
            "Dest Morva a=b note=\"two words\"\n");
  EXPECT_EQ(withSavedOptions(kOthers, kDraft, {{"a", "b"}}), kOthers + std::string("Dest Morva/draft a=b\n"));
  EXPECT_EQ(withSavedOptions("Dest Other x=1", kMorva, {{"a", "b"}}), "Dest Other x=1\nDest Morva a=b\n");
}

TEST(SavedOptions, ReplaceThoseOfTheSameKeywordInTheirLine) {
  const std::string before =
      kOthers + std::string("default morva/DRAFT A=1 keep='it\\'s' on # why\r\n") + kOthers;
  EXPECT_EQ(withSavedOptions(before, kDraft, {{"a", "2"}, {"new", "3"}}),
            kOthers + std::string("default morva/DRAFT a=2 keep=\"it's\" on=true new=3\r\n") + kOthers);
}

TEST(SavedOptions, AreReadFromAndSavedInEachLineOfTheirPrinter) {
  const std::string before = "Dest Morva a=1 b=1\nDest Morva a=2\n";
  EXPECT_EQ(allIn(before, kMorva), (Options{{"a", "2"}, {"b", "1"}}));
  EXPECT_EQ(withSavedOptions(before, kMorva, {{"b", "3"}}), "Dest Morva a=1 b=3\nDest Morva a=2 b=3\n");
  EXPECT_EQ(withSavedOptions("Default Morva\n#\nDest Morva b=1", kMorva, {{"b", "3"}}),
            "Default Morva b=3\n#\nDest Morva b=3\n");
}

TEST(SavedOptions, AreRemovedFromEachLineOfTheirPrinterOnly) {
  const auto before = kOthers + std::string("Dest Morva a=1 b=1\nDefault Morva A=2\nDest Morva/draft a=3\n");
  EXPECT_EQ(withSavedOptions(before, kMorva, {{"b", "3"}}, {"a", "c"}),
            kOthers + std::string("Dest Morva b=3\nDefault Morva b=3\nDest Morva/draft a=3\n"));
  EXPECT_EQ(withSavedOptions(kOthers, kMorva, {}, {"a"}), kOthers);
}

TEST(SavedOptions, KeepAHashSignThatBeginsNoComment) {
  const auto text = withSavedOptions("Dest Morva note=a\\#b\n", kMorva, {{"x", "1"}});
  EXPECT_EQ(text, "Dest Morva note=\"a\\#b\" x=1\n");
  EXPECT_EQ(allIn(*text, kMorva), (Options{{"note", "a#b"}, {"x", "1"}}));
}

TEST(SavedOptions, MayContainAnyMark) {
  EXPECT_EQ(allIn("Dest A^B a=1^", DestinationName{"A^B", std::nullopt}), (Options{{"a", "1^"}}));
}

TEST(SavedOptions, AreRefusedIfCupsWouldCutTheLine) {
  EXPECT_TRUE(withSavedOptions("", kMorva, {{"a", std::string(8000, 'x')}}));
  EXPECT_FALSE(withSavedOptions("", kMorva, {{"a", std::string(8192, 'x')}}));
  const auto full = "Dest Morva b=" + std::string(8000, 'x') + "\n";
  EXPECT_FALSE(withSavedOptions(full + "Dest Morva c=1\n", kMorva, {{"a", std::string(500, 'x')}}));
}

TEST(SavedOptions, MayFillALineUpToItsLastByte) {
  const std::string begin = "Dest Morva a=";
  const std::string longest(8191 - begin.size(), 'x');
  EXPECT_EQ(withSavedOptions("", kMorva, {{"a", longest}}), begin + longest + "\n");
  EXPECT_FALSE(withSavedOptions("", kMorva, {{"a", longest + "x"}}));
  EXPECT_EQ(allIn(begin + longest + "y\n", kMorva), (Options{{"a", longest}}));
}

TEST(SavedOptions, AreReadFromTheRestOfALongLineAsFromAnotherLine) {
  const std::string first = "Dest Other a=" + std::string(8178, 'x');
  EXPECT_EQ(allIn(first + "Dest Morva b=2", kMorva), (Options{{"b", "2"}}));
  EXPECT_EQ(allIn(first + "x" + "Dest Morva b=2", kMorva), Options{});
}

TEST(SavedOptions, AreReadUpToAZeroByteAndWithAnyBlanksBetweenTheWords) {
  using std::string_literals::operator""s;
  EXPECT_EQ(allIn("Dest Morva\0 a=1\nDest Morva b=2\0 c=3"s, kMorva), (Options{{"b", "2"}}));
  EXPECT_EQ(allIn("\tDest\v\fMorva\ta=1 \t\v\f", kMorva), (Options{{"a", "1"}}));
}

TEST(SavedOptions, AreRemovedWithoutChangingOtherLines) {
  const std::string before = kOthers + std::string("Dest Morva a=1\nDest Morva/draft b=2\nDest MORVA c=3");
  EXPECT_EQ(withoutSavedOptions(before, kMorva), kOthers + std::string("Dest Morva/draft b=2\n"));
  EXPECT_EQ(withoutSavedOptions("Default Morva/draft a=1\nDest Morva b=2\n", kDraft),
            "Default Morva/draft\nDest Morva b=2\n");
}

TEST(SavedOptions, OfALaterFileReplaceEarlierValuesButKeepTheEarlierSpelling) {
  const std::vector<std::string> texts{"Dest Morva a=1 b=1\nDest Morva c=1\n", "Dest morva A=2 d=2"};
  EXPECT_EQ(savedOptions(texts, kMorva, SavedLines::first), (Options{{"a", "2"}, {"b", "1"}, {"d", "2"}}));
  EXPECT_EQ(savedOptions(texts, kMorva, SavedLines::all),
            (Options{{"a", "2"}, {"b", "1"}, {"c", "1"}, {"d", "2"}}));
  EXPECT_EQ(savedOptions(texts, kDraft, SavedLines::all), Options{});
}

TEST(SavedOptions, OfAnEmptyInstanceAreNotThoseOfThePrinter) {
  const std::string text = "Dest Morva/ a=1\nDest Morva b=2\n";
  EXPECT_EQ(allIn(text, kMorva), (Options{{"b", "2"}}));
  EXPECT_EQ(allIn(text, DestinationName{"Morva", ""}), (Options{{"a", "1"}}));
}

TEST(SavedOptions, MayBeAllCommentedOut) {
  EXPECT_EQ(allIn("#Dest Morva a=1\nDest Morva # a=1\nDest Morva #\n", kMorva), Options{});
}

TEST(SavedOptions, OfNoPrinterInParticularAreThoseOfAllPrintersButOfNoInstance) {
  EXPECT_EQ(allIn("Dest One a=1\nDefault Two b=2\nDest One/draft c=3", std::nullopt),
            (Options{{"a", "1"}, {"b", "2"}}));
}

TEST(TheDefaultDestination, IsTheFirstThatTheFileNames) {
  const auto found = defaultDestination("Dest Other\nDefault\n default Morva/draft a=1\nDefault Other\n");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->printer, "Morva");
  EXPECT_EQ(found->instance, "draft");
  EXPECT_FALSE(defaultDestination("Dest Morva a=1\n# Default Morva"));
  EXPECT_FALSE(defaultDestination("Default /draft"));
}

}  // namespace
}  // namespace tandemtrim::host
