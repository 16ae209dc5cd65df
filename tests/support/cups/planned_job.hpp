#pragma once

#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A job as the tests of many jobs hand it to a program that sends it: one line of JSON.
struct PlannedJob {
  std::string title;
  std::string printer;
  Options options;
};

/// Calls `act` with the next job of standard input; false where there is none.
inline bool readJob(PlannedJob& job) {
  std::string line;
  if (!std::getline(std::cin, line)) return false;
  const auto json = nlohmann::ordered_json::parse(line);
  job = {json["title"], json["printer"], {}};
  for (const auto& [keyword, value] : json["options"].items()) job.options.push_back({keyword, value});
  return true;
}

/// Writes down what became of the job: its number where it is called confirmed, else none.
inline void writeAnswer(const PlannedJob& job, std::optional<int> number) {
  const auto confirmed = number ? nlohmann::json(*number) : nlohmann::json(nullptr);
  std::cout << nlohmann::json{{"title", job.title}, {"job", confirmed}} << std::endl;
}

}  // namespace tandemtrim::host
