#include "host/cli/interruption.hpp"

#include <array>
#include <csignal>
#include <string>

#include <unistd.h>

namespace tandemtrim::host {
namespace {

constexpr std::array<int, 2> kSignals{SIGINT, SIGTERM};
constexpr int kOfShells = 128;

volatile std::sig_atomic_t received = 0;

// Without SA_RESTART, so that a read from a pipe that gives nothing ends.
void handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigaction(signal, &action, nullptr);
}

std::string wordOf(int signal) { return signal == SIGINT ? "interrupted" : "terminated"; }

extern "C" void onSignal(int signal) {
  if (signal == SIGALRM) return;
  received = signal;
  for (const int next : kSignals) handle(next, SIG_DFL);
  // Ends a read that began between the last look and the signal.
  alarm(1);
}

}  // namespace

Interruption::Interruption() {
  received = 0;
  handle(SIGALRM, onSignal);
  for (const int signal : kSignals) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) handle(signal, onSignal);
  }
}

Interruption::~Interruption() {
  alarm(0);
  for (const int signal : kSignals) {
    struct sigaction now {};
    sigaction(signal, nullptr, &now);
    if (now.sa_handler == onSignal) handle(signal, SIG_DFL);
  }
  handle(SIGALRM, SIG_DFL);
}

void Interruption::check() {
  if (received == 0) return;
  throw Failure(Trouble::cancelled, wordOf(received), "", kOfShells + received);
}

Failure Interruption::causeOf(const Failure& failure) {
  if (received == 0 || failure.exitStatus() == kOfShells + received) return failure;
  return Failure(failure.trouble(), wordOf(received) + "; " + failure.fact(), failure.remedy(),
                 kOfShells + received);
}

}  // namespace tandemtrim::host
