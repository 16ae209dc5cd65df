#include "host/presets/preset.hpp"

#include <nlohmann/json.hpp>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kIndentation = 2;
constexpr const char* kPanel = "panel";
constexpr const char* kOptions = "options";
constexpr const char* kPreset = "preset";

Json jsonOf(const Options& options) {
  auto json = Json::object();
  for (const auto& [keyword, value] : options) json[keyword] = value;
  return json;
}

Options optionsIn(const Json& preset, const char* key) {
  Options options;
  if (!preset.contains(key)) return options;
  const auto& json = preset.at(key);
  if (!json.is_object()) throw Failure(std::string("\"") + key + "\" is not a JSON object");
  for (const auto& [keyword, value] : json.items()) {
    if (keyword.empty() || !value.is_string())
      throw Failure(std::string("\"") + key + "\" has an entry that is not a text: \"" + keyword + '"');
    setOption(options, {keyword, value.get<std::string>()});
  }
  return options;
}

}  // namespace

std::string presetText(const Preset& preset) {
  const Json json{{kPanel, jsonOf(preset.panel)}, {kOptions, jsonOf(preset.options)}};
  return json.dump(kIndentation, ' ', false, Json::error_handler_t::replace) + '\n';
}

Preset presetFrom(const std::string& name, const std::string& text) {
  const auto json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) throw Failure("it is not JSON");
  if (!json.is_object()) throw Failure("it is not a JSON object");
  return {name, optionsIn(json, kPanel), withoutThoseOfOneJob(optionsIn(json, kOptions))};
}

std::string textNamingPreset(const std::string& name) {
  return Json{{kPreset, name}}.dump(kIndentation, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::optional<std::string> presetNamedIn(const std::string& text) {
  const auto json = Json::parse(text, nullptr, false);
  const bool isNamed = json.is_object() && json.contains(kPreset) && json.at(kPreset).is_string();
  return isNamed ? std::optional(json.at(kPreset).get<std::string>()) : std::nullopt;
}

}  // namespace tandemtrim::host
