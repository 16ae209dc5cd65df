#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "host/job/command_line.hpp"

namespace tandemtrim::host {

/// One of lp's options that set options of the job.
struct JobOption {
  const char* name;
  const char* type;
  const char* help;
  /// The required form of a text, for a message; null if `read` reports mistakes itself.
  const char* form;
  /// nullopt for a text of another form.
  std::optional<Options> (*read)(const std::string& text);
};

/// In the order of lp's manual page.
extern const std::array<JobOption, 5> kJobOptions;

// Each of these throws a Failure with the status of a wrong command line for a text that it does not accept.

/// The job's options that this option of the command line sets when it has this text.
Options optionsFrom(const JobOption& option, const std::string& text);

/// The texts of --applications and their meanings.
extern const std::array<std::pair<const char*, Applications>, 3> kApplicationsTexts;

/// Reads the text of --applications.
Applications applicationsFrom(const std::string& text);

/// Reads the text of --set, "name=text".
Input inputFrom(const std::string& text);

/// Checks the text of -h: "host", "host:port", or a socket's path.
void refuseWrongServer(const std::string& server);

/// Checks the text of -d: "printer" or "printer/instance".
void refuseWrongPrinter(const std::string& printer);

/// The option by which lp makes the server send mail to the user; nullopt means the user who runs the
/// program.
Option mailOption(const std::optional<std::string>& user);

}  // namespace tandemtrim::host
