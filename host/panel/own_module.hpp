#pragma once

#include <string>

namespace tandemtrim::host {

/// One of the program's modules, which stays loaded until the program ends.
struct OwnModule {
  /// From dlopen(); null where the module is not installed or cannot be used.
  void* handle = nullptr;
  /// Why it cannot be used; empty where it is not installed.
  std::string fault;
};

/// Loads the module of this name ("dialog/tandem-trim-dialog"), from beside the program in a build, or from
/// the libraries' folder of the installation. A module that others could change, or that is of another build,
/// cannot be used. May be called in the background.
OwnModule loadOwnModule(const std::string& name);

/// One of the project's other programs: beside this one in a build, or in the programs' folder of the
/// installation.
struct OwnProgram {
  /// Empty where it is not installed or cannot be used.
  std::string path;
  /// Why it cannot be used; empty where it is not installed.
  std::string fault;
};

/// Finds the program of this name ("tandem-trim-notifier"). One that others could change cannot be used.
OwnProgram findOwnProgram(const std::string& name);

/// The function that the loaded module exports by this name.
void* exportedBy(const OwnModule& module, const char* function);

}  // namespace tandemtrim::host
