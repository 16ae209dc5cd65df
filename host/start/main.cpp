#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include <unistd.h>

#include "host/panel/own_module.hpp"
#include "host/start/terminal.hpp"

namespace {

int refuse(std::string_view reason) {
  std::cerr << "tandem-trim: the program cannot start, and nothing was sent: " << reason << '\n';
  return 1;
}

// Reports an exception that nothing can catch, which libraries throw mostly for lack of memory, and ends the
// program.
[[noreturn]] void giveUp() noexcept {
  const char* reason = "an unknown error";
  try {
    if (std::current_exception()) throw;
  } catch (const std::exception& error) {
    reason = error.what();
  } catch (...) {
  }
  for (const char* const words : {"tandem-trim: the program had to stop (", reason,
                                  "); its job may still be printed (see lpstat -o)\n"})
    static_cast<void>(write(STDERR_FILENO, words, std::strlen(words)));
  _exit(1);
}

}  // namespace

// For each symbol of a library that is loaded later, the loader first searches the program's own libraries.
// The dialog loads a hundred libraries. To keep that fast, this program is linked with the standard libraries
// only and loads the real program as a module.
int main(int argc, char* argv[]) {
  using namespace tandemtrim::host;
  std::set_terminate(giveUp);
  try {
    const auto program = loadOwnModule(kTerminalModule);
    if (program.handle != nullptr)
      return reinterpret_cast<RunProgram>(exportedBy(program, kRunFunction))(argc, argv);
    return refuse(program.fault.empty() ? "its part " + std::string(kTerminalModule) +
                                              " is missing; install the package tandem-trim again"
                                        : program.fault);
  } catch (const std::exception& error) {
    return refuse(error.what());
  }
}
