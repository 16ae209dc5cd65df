#pragma once

#include <optional>
#include <string>

#include "host/cups/sent_job.hpp"
#include "host/notifier/order.hpp"
#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The notifications about a job that this server has: which settings the server confirmed or lost, by the
/// panel's titles, and that the job was cancelled or failed.
NotifierOrder orderFor(const SentJob& job, const std::optional<std::string>& server,
                       const PanelResult& panel);

}  // namespace tandemtrim::host
