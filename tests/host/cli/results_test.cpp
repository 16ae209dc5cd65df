#include "host/cli/results.hpp"

#include <cstdint>
#include <limits>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace tandemtrim::host {
namespace {

using Kind = platform::PanelSetting::Kind;

JobSettings sample() {
  JobSettings settings;
  settings.options = {{"media", "A4"}, {"MVTopMargin", "5"}, {"note", "two words"}};
  settings.panel = PanelResult{
      {{"Top margin", "5"}, {"Left margin", "3"}},
      {{"MVTandemTrim", "Valid", "Use", Kind::onOff, {{"On", "Ein"}, {"Off", "Aus"}}, 0, 0, "", "On"},
       {"MVTopMargin", "Top", "Top", Kind::number, {}, 0, 30, "mm", "5"}}};
  return settings;
}

nlohmann::json jsonOf(const JobSettings& settings, const std::optional<std::string>& printer = "Morva",
                      const std::optional<SentJob>& job = std::nullopt) {
  std::ostringstream out;
  showJson(out, printer, settings, job);
  return nlohmann::json::parse(out.str());
}

TEST(TheJson, HasLimitsUpToTheLargestNumber) {
  auto settings = sample();
  settings.panel->settings[1].maximum = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(jsonOf(settings)["limits"]["Top"]["max"], std::numeric_limits<std::int64_t>::max());
}

TEST(TheJson, ListsNoChoicesOfASettingThatHasNone) {
  auto settings = sample();
  settings.panel->settings[0].choices.clear();
  EXPECT_EQ(jsonOf(settings)["limits"]["Valid"]["choices"], nlohmann::json::array());
}

TEST(TheJson, IsIndentedByTwoBlanks) {
  std::ostringstream out;
  showJson(out, "Morva", sample(), std::nullopt);
  EXPECT_THAT(out.str(),
              testing::StartsWith("{\n  \"printer\": \"Morva\",\n  \"settings\": {\n    \"media\""));
}

TEST(TheJson, EscapesCharactersThatControlATerminal) {
  auto settings = sample();
  const std::string value = "\x1B[31m\n\x7F\u0080\u009B\u2028\u202E\u2066 Größe 日本";
  settings.options = {{"note", value}};
  std::ostringstream out;
  showJson(out, "Mor\u009Bva", settings, std::nullopt);
  EXPECT_THAT(
      out.str(),
      testing::HasSubstr(
          "\"\\u001b[31m\\n\\u007f\\u0080\\u009b\\u2028\\u202e\\u2066 Gr\\u00f6\\u00dfe \\u65e5\\u672c\""));
  EXPECT_THAT(out.str(), testing::HasSubstr("\"Mor\\u009bva\",\n"));
  EXPECT_EQ(nlohmann::json::parse(out.str())["settings"]["note"], value);
}

TEST(ASummary, ShowsATitleAndItsValueOnEachLine) {
  std::ostringstream out;
  showSummary(out, sample());
  EXPECT_EQ(out.str(), "Top margin: 5\nLeft margin: 3\n");
}

TEST(ASummary, HasNoControlCharacters) {
  auto settings = sample();
  settings.panel->summary = {{"Top\x1B", "5\x1B"}};
  std::ostringstream out;
  showSummary(out, settings);
  EXPECT_EQ(out.str(), "Top\uFFFD: 5\uFFFD\n");
}

TEST(ASummary, OfAPrinterWithoutThePanelIsEmpty) {
  std::ostringstream out;
  showSummary(out, {{{"media", "A4"}}, std::nullopt});
  EXPECT_EQ(out.str(), "");
}

TEST(ShownOptions, CanBePastedAfterLp) {
  std::ostringstream out;
  showOptions(out, sample().options);
  EXPECT_EQ(out.str(), "-o media=A4\n-o MVTopMargin=5\n-o 'note=\"two words\"'\n");
}

TEST(TheJson, HasPrinterSettingsLimitsAndSummary) {
  const auto json = jsonOf(sample());
  EXPECT_EQ(json["printer"], "Morva");
  EXPECT_EQ(json["settings"]["MVTopMargin"], "5");
  EXPECT_EQ(json["settings"]["note"], "two words");
  EXPECT_EQ(json["limits"]["Top"], nlohmann::json::parse(R"({"keyword":"MVTopMargin","min":0,"max":30})"));
  EXPECT_EQ(json["limits"]["Valid"],
            nlohmann::json::parse(R"({"keyword":"MVTandemTrim","choices":["On","Off"]})"));
  EXPECT_EQ(
      json["summary"],
      nlohmann::json::parse(R"([{"title":"Top margin","value":"5"},{"title":"Left margin","value":"3"}])"));
  EXPECT_FALSE(json.contains("job"));
}

TEST(TheJson, OfAPrinterWithoutThePanelHasNoLimitsAndNoSummary) {
  const auto json = jsonOf({{}, std::nullopt}, std::nullopt);
  EXPECT_TRUE(json["printer"].is_null());
  EXPECT_EQ(json["settings"], nlohmann::json::object());
  EXPECT_EQ(json["limits"], nlohmann::json::object());
  EXPECT_EQ(json["summary"], nlohmann::json::array());
}

TEST(TheJson, DescribesTheJob) {
  SentJob job{17, "Morva", 7, ReportedJob{}, Failure("note is lost")};
  job.reported->lost = {{"note", "a", "b"}};
  EXPECT_EQ(jsonOf(sample(), "Morva", job)["job"],
            nlohmann::json::parse(R"({"id":17,"options":7,"confirmed":6,"lost":["note"],"state":"pending",
                                      "reasons":"","problem":"note is lost"})"));
  job.reported->reasons = "job-printing";
  job.reported->state = IPP_JSTATE_PROCESSING;
  job.reported->lost.clear();
  job.failure.reset();
  EXPECT_EQ(jsonOf(sample(), "Morva", job)["job"],
            nlohmann::json::parse(R"({"id":17,"options":7,"confirmed":7,"lost":[],"state":"processing",
                                      "reasons":"job-printing","problem":null})"));
  const SentJob unknown{17, "Morva", 7, {}, Failure("no answer")};
  EXPECT_EQ(jsonOf(sample(), "Morva", unknown)["job"],
            nlohmann::json::parse(R"({"id":17,"options":7,"confirmed":null,"lost":null,"state":null,
                                      "reasons":null,"problem":"no answer"})"));
}

TEST(TheJson, ReplacesBytesThatAreNotUtf8) {
  EXPECT_EQ(jsonOf({{{"note", "caf\xE9"}}, std::nullopt})["settings"]["note"], "caf\xEF\xBF\xBD");
}

}  // namespace
}  // namespace tandemtrim::host
