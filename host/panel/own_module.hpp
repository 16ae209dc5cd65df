#pragma once

#include <string>

namespace tandemtrim::host {

/// A module of the program's own, which stays loaded until the program ends.
struct OwnModule {
  /// As dlopen() gives it; null where the module is not installed or cannot be used.
  void* handle = nullptr;
  /// Why it cannot be used; empty where it is not installed.
  std::string fault;
};

/// Loads the module of this name ("dialog/tandem-trim-dialog"), which lies beside the program where it was
/// built and in the libraries' folder where it is installed. One that strangers could change, or that is of
/// another build, cannot be used. It may run in the background.
OwnModule loadOwnModule(const std::string& name);

/// A program of the project's own, which lies beside this one where both were built, and in the programs'
/// folder of the installation.
struct OwnProgram {
  /// Empty where it is not installed or cannot be used.
  std::string path;
  /// Why it cannot be used; empty where it is not installed.
  std::string fault;
};

/// Finds the program of this name ("tandem-trim-notifier"). One that strangers could change cannot be used.
OwnProgram findOwnProgram(const std::string& name);

/// The function that the loaded module exports by this name.
void* exportedBy(const OwnModule& module, const char* function);

}  // namespace tandemtrim::host
