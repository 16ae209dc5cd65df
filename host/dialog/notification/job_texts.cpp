#include "host/dialog/notification/job_texts.hpp"

#include <algorithm>

#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

std::string headingOf(const SentJob& job, const char* text) {
  return filled(localized(text),
                {{"[number]", std::to_string(job.number)}, {"[printer]", shortText(job.printer)}});
}

void addItem(std::string& list, const std::string& item) {
  list.append(list.empty() ? "" : localized(kListSeparatorText)).append(shortText(item));
}

std::string confirmedSettings(const PanelResult& panel) {
  std::string list;
  for (const auto& [title, value] : panel.summary) addItem(list, title + ": " + value);
  return list;
}

// The title of the value, or the value itself when the setting has no title for it.
std::string shownValue(const platform::PanelSetting& setting, const std::string& value) {
  const auto choice = std::ranges::find(setting.choices, value, &platform::SettingChoice::value);
  return choice == setting.choices.end() ? value : choice->title;
}

std::string lostSetting(const LostOption& lost, const PanelResult& panel) {
  const auto setting =
      std::ranges::find_if(panel.settings, [&](const auto& each) { return each.keyword == lost.keyword; });
  platform::PanelSetting other;
  other.title = lost.keyword;
  const auto& known = setting == panel.settings.end() ? other : *setting;
  return known.title + " (" + shownValue(known, lost.sent) +
         (lost.atServer ? " → " + shownValue(known, *lost.atServer) : "") + ')';
}

std::string lostSettings(const SentJob& job, const PanelResult& panel) {
  std::string list;
  for (const auto& lost : job.reported->lost) addItem(list, lostSetting(lost, panel));
  return list;
}

NotificationText sentText(const SentJob& job, const PanelResult& panel) {
  if (!job.failure) return {headingOf(job, kJobConfirmedText), confirmedSettings(panel)};
  if (job.reported && !job.reported->lost.empty())
    return {headingOf(job, kJobLostSettingsText), lostSettings(job, panel)};
  return {headingOf(job, kJobUnconfirmedText), plainText(job.failure->fact().in(localized))};
}

}  // namespace

NotifierOrder orderFor(const SentJob& job, const std::optional<std::string>& server,
                       const PanelResult& panel) {
  const auto title = shortText(job.title);
  auto sent = sentText(job, panel);
  sent.body.insert(0, title + (sent.body.empty() ? "" : "\n"));
  return {server,
          job.printer,
          job.number,
          std::move(sent),
          {headingOf(job, kJobCancelledText), title},
          {headingOf(job, kJobFailedText), title}};
}

}  // namespace tandemtrim::host
