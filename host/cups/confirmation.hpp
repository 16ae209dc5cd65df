#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cups/connection.hpp"
#include "host/cups/cups_handles.hpp"
#include "host/cups/printer.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Those of the options that a server keeps as attributes of the job: not those of a subscription to its
/// events, nor another name for its title.
Options optionsOfTheJob(const Options& options);

/// The options that the server does not hold for a job as they were sent, by keyword; none when the server no
/// longer knows the job.
std::optional<std::vector<std::string>> lostOptions(const Connection& connection, const Printer& printer,
                                                    int job, const Options& sent);

/// The same for the attributes of a job that the server has answered with.
std::vector<std::string> lostOptions(const MessageHandle& jobAttributes, const Options& sent);

}  // namespace tandemtrim::host
