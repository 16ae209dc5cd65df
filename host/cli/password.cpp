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
constexpr std::array kKeptSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGTTIN, SIGTTOU};

volatile std::sig_atomic_t keptSignal = 0;

extern "C" void onSignalAtQuestion(int signal) { keptSignal = signal; }

// Defers signals until its destruction, when the last of them takes its usual effect.
class Signals {
 public:
  Signals() {
    keptSignal = 0;
    struct sigaction action {};
    action.sa_handler = onSignalAtQuestion;  // Without SA_RESTART, so that reading ends.
    for (std::size_t i = 0; i < kKeptSignals.size(); ++i) {
      sigaction(kKeptSignals[i], nullptr, &before_[i]);
      if (!isIgnored(kKeptSignals[i])) sigaction(kKeptSignals[i], &action, nullptr);
    }
  }
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;
  ~Signals() {
    for (std::size_t i = 0; i < kKeptSignals.size(); ++i) sigaction(kKeptSignals[i], &before_[i], nullptr);
    if (keptSignal != 0) raise(keptSignal);
  }

 private:
  std::array<struct sigaction, kKeptSignals.size()> before_{};
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
  if (write(terminal, text.data(), text.size()) < 0) keptSignal = SIGHUP;
}

// Reads up to the end of the line, or a signal.
std::string readLine(int terminal) {
  std::string line;
  for (char typed = 0; keptSignal == 0 && read(terminal, &typed, 1) == 1 && typed != '\n';) line += typed;
  return line;
}

}  // namespace

std::optional<std::string> passwordFromTerminal(const std::string& prompt) {
  const FileDescriptor terminal(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!terminal.isOpen()) return std::nullopt;
  std::string password;
  do {
    const Signals signals;
    const NoEcho hidden(terminal.get());
    writeText(terminal.get(), prompt);
    password = readLine(terminal.get());
    writeText(terminal.get(), "\n");
    // A program that was stopped asks again when it continues.
  } while (keptSignal == SIGTSTP || keptSignal == SIGTTIN || keptSignal == SIGTTOU);
  if (keptSignal != 0 || password.empty()) return std::nullopt;
  return password;
}

}  // namespace tandemtrim::host
