#include "host/fact.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

std::string inGerman(std::string_view english) {
  if (english == "[printer] is stopped") return "[printer] ist angehalten";
  if (english == "nothing was printed: [reason]") return "nichts gedruckt: [reason]";
  return std::string(english);
}

Fact stopped(const std::string& printer) { return {"[printer] is stopped"_fact, {{"[printer]", printer}}}; }

TEST(AFact, IsTranslatedTogetherWithTheFactThatItQuotes) {
  const Fact fact("nothing was printed: [reason]"_fact, {{"[reason]", stopped("Morva")}});
  EXPECT_EQ(fact.english(), "nothing was printed: Morva is stopped");
  EXPECT_EQ(fact.in(inGerman), "nichts gedruckt: Morva ist angehalten");
}

TEST(AFact, MaySayMoreAtATerminalThanInADialog) {
  const Fact fact("Morva is stopped since Monday", "[printer] is stopped"_fact, {{"[printer]", "Morva"}});
  EXPECT_EQ(fact.english(), "Morva is stopped since Monday");
  EXPECT_EQ(fact.in(inGerman), "Morva ist angehalten");
}

TEST(AFact, QuotesSomebodyElsesWordsInParentheses) {
  const auto fact = withWords(stopped("Morva"), "no paper");
  EXPECT_EQ(fact.english(), "Morva is stopped (no paper)");
  EXPECT_EQ(fact.in(inGerman), "Morva ist angehalten (no paper)");
  EXPECT_EQ(withWords(stopped("Morva"), "").english(), "Morva is stopped");
}

TEST(AFact, LeavesTheWordsOfOthersAsTheyAre) {
  EXPECT_EQ(Fact("[printer] is stopped").in(inGerman), "[printer] is stopped");
  EXPECT_EQ(stopped("[words]").english(), "[words] is stopped");
}

}  // namespace
}  // namespace tandemtrim::host
