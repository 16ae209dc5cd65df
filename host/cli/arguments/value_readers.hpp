#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "host/job/command_line.hpp"

namespace tandemtrim::host {

/// One of lp's options that stand for options of the job.
struct JobOption {
  const char* name;
  const char* type;
  const char* help;
  /// What a text has to be; null where `read` says itself what is wrong.
  const char* form;
  /// None for a text that is something else.
  std::optional<Options> (*read)(const std::string& text);
};

/// In the order of lp's manual page.
extern const std::array<JobOption, 5> kJobOptions;

// Each of these raises a Failure with the status of a wrong command line for a text that it cannot take.

/// The options of the job that this text of the option stands for.
Options optionsFrom(const JobOption& option, const std::string& text);

/// Each with the text of --applications that means it.
extern const std::array<std::pair<const char*, Applications>, 3> kApplicationsTexts;

/// The text of --applications.
Applications applicationsFrom(const std::string& text);

/// "name=text" as an act at the panel.
Input inputFrom(const std::string& text);

/// Looks at the text of -h: "host", "host:port", or a socket's path.
void refuseWrongServer(const std::string& server);

/// Looks at the text of -d: "printer" or "printer/instance".
void refuseWrongPrinter(const std::string& printer);

/// As lp asks the server for a letter to whoever prints; none is whoever runs the program.
Option letterTo(const std::optional<std::string>& user);

}  // namespace tandemtrim::host
