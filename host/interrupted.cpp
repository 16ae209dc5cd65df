#include "host/interrupted.hpp"

#include <csignal>

namespace tandemtrim::host {
namespace {

constexpr int kOfShells = 128;

}  // namespace

bool isIgnored(int signal) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler == SIG_IGN;
}

const char* wordOf(int signal) { return signal == SIGINT ? "interrupted" : "terminated"; }

Failure interruptedBy(int signal, const std::optional<Failure>& failure) {
  const std::string word = wordOf(signal);
  const int status = kOfShells + signal;
  if (!failure) return Failure(Trouble::cancelled, word, "", status);
  const auto fact = failure->fact();
  return Failure(failure->trouble(), fact.starts_with(word) ? fact : word + "; " + fact, failure->remedy(),
                 status);
}

}  // namespace tandemtrim::host
