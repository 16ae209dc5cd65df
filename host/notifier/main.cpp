#include <csignal>
#include <iostream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "host/cups/connection/login.hpp"
#include "host/failure.hpp"
#include "host/notifier/desktop.hpp"
#include "host/notifier/order.hpp"
#include "host/notifier/watched_job.hpp"
#include "host/plain_text.hpp"

namespace {

using namespace tandemtrim::host;

// Ends the program even if something does not answer.
void endAfter(std::chrono::seconds time) {
  std::signal(SIGALRM, SIG_DFL);
  sigset_t alone;
  sigemptyset(&alone);
  sigaddset(&alone, SIGALRM);
  pthread_sigmask(SIG_UNBLOCK, &alone, nullptr);
  alarm(static_cast<unsigned>(time.count()));
}

void carryOut(const NotifierOrder& order) {
  DesktopNotification notification;
  if (!notification.show(order.sent)) return;
  if (const auto text = badEndOf(order)) notification.show(*text);
}

}  // namespace

int main(int argc, char** /*argv*/) {
  // Leaves the terminal of the program that started this one.
  setsid();
  endAfter(kTimeForAnswers);
  answerLogins([](const LoginQuestion&) { return std::nullopt; });
  try {
    if (argc != 1)
      throw Failure("only the print dialog starts this program, with an order on standard input");
    const auto order = orderFrom({std::istreambuf_iterator<char>(std::cin), {}});
    endAfter(longestTimeFor(order));
    carryOut(order);
    return kSucceeded;
  } catch (const std::exception& failure) {
    std::cerr << "tandem-trim-notifier: " << plainText(failure.what()) << '\n';
    return kWrongCommandLine;
  }
}
