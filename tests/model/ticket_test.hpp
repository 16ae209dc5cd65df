#pragma once

#include "model/print_ticket.hpp"
#include "tests/support/core_test.hpp"
#include "tests/support/recording/controls.hpp"

namespace tandemtrim::test {

/// A test of a ticket with the key "MVKey" and the default "fallback", on a job that it may fill first.
template <class Ticket>
class TicketTest : public CoreTest {
 protected:
  [[nodiscard]] std::unique_ptr<Ticket> makeTicket() {
    commonInfo = makeCommonInfo();
    auto ticket = Ticket::initWithDefaultValue("fallback", "MVKey", commonInfo);
    settings().log.clear();
    bundle->log.clear();
    return ticket;
  }

  std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo;
  /// The calls to the controls of the test.
  Log log;
};

}  // namespace tandemtrim::test
