// The input is a job's print settings under the panel's keys, in the panel's order, with a byte 0 between
// them; a value follows a byte 1, and any other field is a key without a value. A save changes only values
// that the panel cannot show, and margins stay until a user edits them.
#include <vector>

#include "fuzz/support/panel.hpp"
#include "fuzz/support/target.hpp"

namespace tandemtrim::fuzz {
namespace {

using Values = std::vector<std::optional<std::string>>;

Values valuesFrom(std::string_view input) {
  Values values(kSettings.size());
  for (auto& value : values) {
    const auto field = input.substr(0, input.find('\0'));
    if (field.starts_with('\1')) value = field.substr(1);
    input.remove_prefix(std::min(field.size() + 1, input.size()));
  }
  return values;
}

Values storedIn(const Job& job) {
  Values values;
  for (const auto& setting : kSettings) values.push_back(job.stored(setting.keyword));
  return values;
}

std::string textOf(const std::string& value) { return "(" + value + ")"; }

void examineSummary(platform::PrintPanel& panel, const Values& values) {
  const auto summary = panel.summaryInfo();
  const auto row = [&](const char* title) {
    const auto value = platform::find(summary, textOf(title));
    require(value && value->as<std::string>(), std::string("a row for ") + title);
    return *value->as<std::string>();
  };
  if (values[0] != "On") {
    require(summary.size() == 1 && row("EnableTandemTrim") == textOf(*values[0]), "switched off, one row");
    return;
  }
  constexpr std::array kTitles{
      "ImageDirection", "InformPrintingPosition", "TopMargin", "BottomMargin", "LeftMargin", "RightMargin"};
  require(summary.size() == kTitles.size() + 1, "switched on, six rows and their order");
  for (std::size_t i = 0; i < kTitles.size(); ++i) {
    const auto& value = values[i + 1].value();
    require(row(kTitles.at(i)) == (i < 2 ? textOf(value) : value), "the summary shows the stored values");
  }
}

Values afterSaving(Values values) {
  if (values[0] != "On") values[0] = "Off";
  if (values[1] != "LongEdgeFeed" && values[1] != "ShortEdgeFeed") values[1].reset();
  if (values[2] != "Left" && values[2] != "Center" && values[2] != "Right") values[2].reset();
  return values;
}

}  // namespace

void examine(std::string_view input) {
  const auto job = std::make_shared<Job>();
  auto values = valuesFrom(input);
  for (std::size_t i = 0; i < values.size(); ++i) {
    job->settings.PMPrintSettingsSetValue(kSettings.at(i).keyword, values[i], false);
    if (!values[i]) values[i] = defaultOf(i);
  }
  const auto panel = openPanel(job, std::make_shared<Resources>());
  require(storedIn(*job) == values, "making a panel stores the defaults that are missing and nothing else");
  examineSummary(*panel, values);
  require(storedIn(*job) == values, "a summary stores nothing");
  panel->saveValuesAndReturnError(nullptr);
  require(storedIn(*job) == values, "without a view nothing is saved");

  auto& view = viewOf(*panel);
  panel->willShow();
  require(storedIn(*job) == values, "showing stores nothing");
  panel->saveValuesAndReturnError(nullptr);
  require(storedIn(*job) == afterSaving(values), "saving stores the shown values");

  panel->restoreValuesAndReturnError(nullptr);
  panel->saveValuesAndReturnError(nullptr);
  auto again = afterSaving(values);
  for (const std::size_t menu : {1U, 2U}) {
    if (!again[menu]) again[menu] = defaultOf(menu);
  }
  require(storedIn(*job) == again, "a choice that was removed is shown as the default");
  examineSummary(*panel, again);

  if (again[0] == "On") {
    for (const auto& margin : kMargins) view.append(margin.marginName, "7");
    panel->saveValuesAndReturnError(nullptr);
    for (std::size_t margin = kFirstMargin; margin < kSettings.size(); ++margin) {
      std::string digits;
      for (const char character : *again[margin] + "7") {
        if (character >= '0' && character <= '9') digits += character;
      }
      require(job->stored(kSettings.at(margin).keyword) ==
                  std::to_string(integerHeldBetween(digits, kSmallest, kLimit)),
              "a margin that is edited is legal");
    }
  }
}

}  // namespace tandemtrim::fuzz
