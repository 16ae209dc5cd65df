#include "host/cli/password.hpp"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "host/file_descriptor.hpp"
#include "host/interrupted.hpp"

namespace tandemtrim::host {
namespace {

// The signals that end or stop the program.
constexpr std::array kDeferredSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGTTIN, SIGTTOU};

volatile std::sig_atomic_t deferredSignal = 0;

extern "C" void deferSignal(int signal) { deferredSignal = signal; }

// Defers signals until its destruction, when the last of them takes its usual effect.
class DeferredSignals {
 public:
  DeferredSignals() {
    deferredSignal = 0;
    struct sigaction action {};
    action.sa_handler = deferSignal;  // Without SA_RESTART, so that reading ends.
    for (std::size_t i = 0; i < kDeferredSignals.size(); ++i) {
      sigaction(kDeferredSignals[i], nullptr, &before_[i]);
      if (!isIgnored(kDeferredSignals[i])) sigaction(kDeferredSignals[i], &action, nullptr);
    }
  }
  DeferredSignals(const DeferredSignals&) = delete;
  DeferredSignals& operator=(const DeferredSignals&) = delete;
  ~DeferredSignals() {
    for (std::size_t i = 0; i < kDeferredSignals.size(); ++i)
      sigaction(kDeferredSignals[i], &before_[i], nullptr);
    if (deferredSignal != 0) raise(deferredSignal);
  }

 private:
  std::array<struct sigaction, kDeferredSignals.size()> before_{};
};

// While it exists, the terminal does not show what is typed.
class NoEcho {
 public:
  explicit NoEcho(int terminal) : terminal_(terminal) {
    tcgetattr(terminal_, &before_);
    auto hidden = before_;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(terminal_, TCSAFLUSH, &hidden);
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;
  ~NoEcho() { tcsetattr(terminal_, TCSAFLUSH, &before_); }

 private:
  int terminal_;
  struct termios before_ {};
};

void writeText(int terminal, const std::string& text) {
  if (write(terminal, text.data(), text.size()) < 0) deferredSignal = SIGHUP;
}

// Reads up to the end of the line, or a signal.
std::string readLine(int terminal) {
  std::string line;
  for (char typed = 0; deferredSignal == 0 && read(terminal, &typed, 1) == 1 && typed != '\n';) line += typed;
  return line;
}

}  // namespace

std::optional<std::string> passwordFromTerminal(const std::string& prompt) {
  const FileDescriptor terminal(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!terminal.isOpen()) return std::nullopt;
  std::string password;
  do {
    const DeferredSignals signals;
    const NoEcho hidden(terminal.get());
    writeText(terminal.get(), prompt);
    password = readLine(terminal.get());
    writeText(terminal.get(), "\n");
    // A program that was stopped asks again when it continues.
  } while (deferredSignal == SIGTSTP || deferredSignal == SIGTTIN || deferredSignal == SIGTTOU);
  if (deferredSignal != 0 || password.empty()) return std::nullopt;
  return password;
}

}  // namespace tandemtrim::host
