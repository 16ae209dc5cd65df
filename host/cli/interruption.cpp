#include "host/cli/interruption.hpp"

#include <array>
#include <csignal>

#include <unistd.h>

#include "host/interrupted.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::array<int, 2> kSignals{SIGINT, SIGTERM};

volatile std::sig_atomic_t received = 0;

// Without SA_RESTART, so that a read that waits for a pipe ends.
void handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigaction(signal, &action, nullptr);
}

extern "C" void onSignal(int signal);

// Lets the signal end the program, unless it was ignored from the start.
void endBy(int signal) {
  struct sigaction now {};
  sigaction(signal, nullptr, &now);
  if (now.sa_handler == onSignal) handle(signal, SIG_DFL);
}

extern "C" void onSignal(int signal) {
  if (signal == SIGALRM) return;
  received = signal;
  for (const int next : kSignals) endBy(next);
  // Ends a read that begins after the signal without another check() before it.
  alarm(1);
}

}  // namespace

Interruption::Interruption() {
  received = 0;
  handle(SIGALRM, onSignal);
  for (const int signal : kSignals) {
    if (!isIgnored(signal)) handle(signal, onSignal);
  }
}

Interruption::~Interruption() {
  alarm(0);
  for (const int signal : kSignals) endBy(signal);
  handle(SIGALRM, SIG_DFL);
}

void Interruption::check() {
  if (received != 0) throw interruptedBy(received, std::nullopt);
}

Failure Interruption::causeOf(const Failure& failure) {
  return received == 0 ? failure : interruptedBy(received, failure);
}

}  // namespace tandemtrim::host
