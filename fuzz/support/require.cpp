#include <cstdlib>
#include <iostream>

#include "fuzz/support/target.hpp"

void tandemtrim::fuzz::require(bool holds, const std::string& property) {
  if (holds) return;
  std::cerr << "this does not hold: " << property << '\n';
  std::abort();
}
