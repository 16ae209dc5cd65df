#pragma once

#include <iostream>
#include <optional>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A job that a test of many jobs plans: one line of JSON on standard input.
struct PlannedJob {
  std::string title;
  std::string printer;
  Options options;
};

/// Reads the next job from standard input; false at its end.
inline bool readJob(PlannedJob& job) {
  std::string line;
  if (!std::getline(std::cin, line)) return false;
  const auto json = nlohmann::ordered_json::parse(line);
  job = {json["title"], json["printer"], {}};
  for (const auto& [keyword, value] : json["options"].items()) job.options.push_back({keyword, value});
  return true;
}

/// Writes a line of JSON with the job's title, and its number if it is confirmed, else null.
inline void writeAnswer(const PlannedJob& job, std::optional<int> number) {
  const auto confirmed = number ? nlohmann::json(*number) : nlohmann::json(nullptr);
  std::cout << nlohmann::json{{"title", job.title}, {"job", confirmed}} << std::endl;
}

}  // namespace tandemtrim::host
