#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "fuzz/target.hpp"

// Takes every file of the folder to the target, for compilers without libFuzzer.
int main(int count, char** arguments) {
  std::size_t inputs = 0;
  for (const auto& file : std::filesystem::directory_iterator(count > 1 ? arguments[1] : "")) {
    std::ifstream stream(file.path(), std::ios::binary);
    const std::string input{std::istreambuf_iterator<char>(stream), {}};
    std::cerr << file.path().filename().string() << '\n';
    tandemtrim::fuzz::examine(input);
    ++inputs;
  }
  return inputs == 0 ? 1 : 0;
}
