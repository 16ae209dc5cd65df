#include "host/notifier/watched_job.hpp"

#include <thread>

#include "host/cups/confirmation.hpp"
#include "host/cups/connection/connection.hpp"
#include "host/cups/sent_job.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::seconds kBetweenLooks{1};

bool isTemporary(const Failure& failure) { return failure.trouble() == Trouble::noServer; }

}  // namespace

std::optional<NotificationText> badEndOf(const NotifierOrder& order) {
  Printer printer;
  printer.name = order.printer;
  std::optional<Connection> connection;
  const auto end = std::chrono::steady_clock::now() + order.watched;
  for (; std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(kBetweenLooks)) {
    try {
      if (!connection) connection.emplace(order.server);
      const auto reported = askForJob(*connection, printer, order.job, {});
      if (!reported || reported->state == IPP_JSTATE_COMPLETED) return std::nullopt;
      if (reported->state == IPP_JSTATE_CANCELED) return order.cancelled;
      if (badEnd(*reported)) return order.failed;
    } catch (const Failure& failure) {
      if (!isTemporary(failure)) return std::nullopt;
      connection.reset();
    }
  }
  return std::nullopt;
}

}  // namespace tandemtrim::host
