#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>

#include "fuzz/support/target.hpp"

// Runs the target with every file of the folder, for compilers without libFuzzer.
int main(int count, char** arguments) {
  std::size_t inputs = 0;
  const std::filesystem::path folder(count > 1 ? arguments[1] : "");
  std::error_code missing;
  for (const auto& file : std::filesystem::directory_iterator(folder, missing)) {
    std::ifstream stream(file.path(), std::ios::binary);
    const std::string input{std::istreambuf_iterator<char>(stream), {}};
    std::cerr << file.path().filename().string() << '\n';
    tandemtrim::fuzz::examine(input);
    ++inputs;
  }
  if (inputs > 0) return 0;
  std::cerr << folder.string() << " has no input to begin with\n";
  return 1;
}
