#pragma once

#include <optional>
#include <string>

#include "host/cups/sent_job.hpp"
#include "host/notifier/order.hpp"
#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The notifications about a job that this server has: the settings that it confirmed or lost, with the
/// titles of the panel that they come from.
NotifierOrder orderFor(const SentJob& job, const std::optional<std::string>& server,
                       const PanelResult& panel);

}  // namespace tandemtrim::host
