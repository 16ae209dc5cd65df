#include "host/interrupted.hpp"

#include <csignal>

namespace tandemtrim::host {
namespace {

constexpr int kShellSignalBase = 128;

}  // namespace

bool isIgnored(int signal) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler == SIG_IGN;
}

const char* wordOf(int signal) { return signal == SIGINT ? "interrupted" : "terminated"; }

Failure interruptedBy(int signal, const std::optional<Failure>& failure) {
  const std::string word = wordOf(signal);
  const int status = kShellSignalBase + signal;
  if (!failure) return Failure(Trouble::cancelled, word, "", status);
  const auto& fact = failure->fact();
  if (fact.english().starts_with(word)) return Failure(failure->trouble(), fact, failure->remedy(), status);
  Fact interrupted(word + "; " + fact.english(), FactText{"[reason]"}, {{"[reason]", fact}});
  return Failure(failure->trouble(), std::move(interrupted), failure->remedy(), status);
}

}  // namespace tandemtrim::host
