#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace tandemtrim::host {

/// The outcome of a command.
struct CommandResult {
  /// Whether it ended in time with exit status 0.
  bool succeeded = false;
  bool isInstalled = true;
  bool inTime = true;
  /// Its standard output and standard error, at most 64 KB.
  std::string said;
};

/// Runs a program, by its path or as a shell finds it, without standard input. After `longest` it is
/// killed, with the programs that it started.
CommandResult runCommand(const std::vector<std::string>& words, std::chrono::milliseconds longest);

}  // namespace tandemtrim::host
