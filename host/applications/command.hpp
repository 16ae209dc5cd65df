#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace tandemtrim::host {

/// What became of a command.
struct CommandResult {
  /// Whether it ended by itself with exit status 0.
  bool succeeded = false;
  bool isInstalled = true;
  bool inTime = true;
  /// What it said on standard output and standard error, at most 64 KB of it.
  std::string said;
};

/// Runs a program, by its path or as a shell finds it, without standard input. When it takes longer it is
/// ended, with the programs that it started.
CommandResult runCommand(const std::vector<std::string>& words, std::chrono::milliseconds longest);

}  // namespace tandemtrim::host
