#include "host/cli/results.hpp"

#include <nlohmann/json.hpp>

#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using Json = nlohmann::ordered_json;

Json limitsJson(const PanelResult& panel) {
  auto limits = Json::object();
  for (const auto& setting : panel.settings) {
    auto& entry = limits[setting.name] = Json::object();
    entry["keyword"] = setting.keyword;
    if (setting.kind == platform::PanelSetting::Kind::number) {
      entry["min"] = setting.minimum;
      entry["max"] = setting.maximum;
    } else {
      entry["choices"] = Json::array();
      for (const auto& choice : setting.choices) entry["choices"].push_back(choice.value);
    }
  }
  return limits;
}

Json summaryJson(const PanelResult& panel) {
  auto rows = Json::array();
  for (const auto& [title, value] : panel.summary) rows.push_back(Json{{"title", title}, {"value", value}});
  return rows;
}

Json jobJson(const SentJob& job) {
  Json json{{"id", job.number}, {"options", job.options}};
  json["confirmed"] = job.reported ? Json(job.options - job.reported->lost.size()) : Json(nullptr);
  json["lost"] = job.reported ? Json::array() : Json(nullptr);
  if (job.reported) {
    for (const auto& option : job.reported->lost) json["lost"].push_back(option.keyword);
  }
  json["state"] = job.reported ? Json(ippEnumString("job-state", job.reported->state)) : Json(nullptr);
  json["reasons"] = job.reported ? Json(job.reported->reasons) : Json(nullptr);
  json["problem"] = job.failure ? Json(job.failure->what()) : Json(nullptr);
  return json;
}

}  // namespace

void showSummary(std::ostream& out, const JobSettings& settings) {
  if (!settings.panel) return;
  for (const auto& [title, value] : settings.panel->summary)
    out << plainText(title) << ": " << plainText(value) << '\n';
}

void showOptions(std::ostream& out, const Options& options) {
  for (const auto& option : options) out << "-o " << shellWord(optionText(option)) << '\n';
}

void showJson(std::ostream& out, const std::optional<std::string>& printer, const JobSettings& settings,
              const std::optional<SentJob>& job) {
  // An object from the start: the library leaves a null value broken if memory runs out while it becomes an
  // object.
  auto json = Json::object();
  json["printer"] = printer ? Json(*printer) : Json(nullptr);
  json["settings"] = Json::object();
  for (const auto& [keyword, value] : settings.options) json["settings"][keyword] = value;
  json["limits"] = settings.panel ? limitsJson(*settings.panel) : Json::object();
  json["summary"] = settings.panel ? summaryJson(*settings.panel) : Json::array();
  if (job) json["job"] = jobJson(*job);
  // In ASCII, because JSON allows some control characters unescaped.
  out << json.dump(2, ' ', true, Json::error_handler_t::replace) << '\n';
}

}  // namespace tandemtrim::host
