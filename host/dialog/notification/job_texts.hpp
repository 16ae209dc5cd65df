#pragma once

#include <optional>
#include <string>

#include "host/cups/sent_job.hpp"
#include "host/notifier/order.hpp"
#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// What the user is told of a job that this server has: what it holds of the job, in the words of the panel
/// that the job's settings come from.
NotifierOrder orderFor(const SentJob& job, const std::optional<std::string>& server,
                       const PanelResult& panel);

}  // namespace tandemtrim::host
