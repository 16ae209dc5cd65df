#include <csignal>
#include <cstdlib>
#include <iostream>
#include <new>

#include <cups/cups.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include "host/cli/arguments/command_line_parser.hpp"
#include "host/cli/completion.hpp"
#include "host/cli/password.hpp"
#include "host/cli/run.hpp"
#include "host/cups/connection/login.hpp"
#include "host/failure.hpp"
#include "host/plain_text.hpp"

namespace {

using namespace tandemtrim::host;

void printMessage(const std::string& message) { std::cerr << "tandem-trim: " << plainText(message) << '\n'; }

// Opens the standard descriptors that are closed. Otherwise the next file or connection would get the number
// of one of them, and then the program's output.
void openStandardDescriptors() {
  int file = 0;
  do file = open("/dev/null", O_RDWR);
  while (file >= 0 && file <= STDERR_FILENO);
  if (file >= 0) close(file);
}

// Writing beyond the user's limit on file sizes then fails, which is reported, and does not end the program.
void ignoreFileLimitSignal() { std::signal(SIGXFSZ, SIG_IGN); }

std::optional<Login> askAtTerminal(const LoginQuestion& question) {
  auto password = passwordFromTerminal(plainText(question.prompt) + " ");
  if (!password) return std::nullopt;
  return Login{cupsUser(), *std::move(password)};
}

// Whether a document may come on standard input: it is a file, a pipe or a connection, not a terminal or
// /dev/null.
bool hasInput() {
  struct stat input {};
  return fstat(STDIN_FILENO, &input) == 0 && !S_ISCHR(input.st_mode);
}

// Sets libcups's own variables, which apply to every thread and to GTK's dialog, too.
void setCupsVariables(const CommandLine& line) {
  if (line.user) setenv("CUPS_USER", line.user->c_str(), 1);
  if (line.encrypted) setenv("CUPS_ENCRYPTION", "Required", 1);
}

void work(std::vector<std::string> arguments) {
  if (!arguments.empty() && arguments.front() == "--complete") {
    arguments.erase(arguments.begin());
    const auto unfinished = parseUnfinished(std::move(arguments));
    setCupsVariables(unfinished.line);
    for (const auto& word : completions(unfinished)) std::cout << plainText(word) << '\n';
    return;
  }
  const auto parsed = parseCommandLine(std::move(arguments), hasInput());
  if (const auto* information = std::get_if<Information>(&parsed)) {
    std::cout << information->text;
  } else {
    const auto& line = std::get<CommandLine>(parsed);
    setCupsVariables(line);
    if (line.verbose) openlog("tandem-trim", LOG_PERROR, LOG_USER);
    run(line, std::cout, printMessage);
  }
  if (!std::cout.flush()) throw Failure("standard output cannot be written to; everything else is done");
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int tandemTrimRun(int argc, char** argv) noexcept {
  openStandardDescriptors();
  ignoreFileLimitSignal();
  answerLogins(askAtTerminal);
  try {
    work({argv + 1, argv + argc});
    return kSucceeded;
  } catch (const Failure& failure) {
    printMessage(failure.what());
    return failure.exitStatus();
  } catch (const std::bad_alloc&) {
    printMessage("there is not enough memory; close other programs and try again");
    return kFailed;
  } catch (const std::exception& error) {
    printMessage(error.what());
    return kFailed;
  }
}
