#include <iostream>
#include <string>

#include "host/panel/own_module.hpp"
#include "host/start/terminal.hpp"

// What a program is linked with is searched for every symbol of every library that is loaded later, first of
// all. The dialog loads a hundred, so the program is linked with nothing, and loads itself as a module.
int main(int argc, char* argv[]) {
  using namespace tandemtrim::host;
  const auto program = loadOwnModule(kTerminalModule);
  if (program.handle == nullptr) {
    const auto reason = program.fault.empty() ? "its part " + std::string(kTerminalModule) +
                                                    " is missing; install the package tandem-trim again"
                                              : program.fault;
    std::cerr << "tandem-trim: the program cannot be used, and nothing was sent: " << reason << '\n';
    return 1;
  }
  return reinterpret_cast<RunProgram>(exportedBy(program, kRunFunction))(argc, argv);
}
