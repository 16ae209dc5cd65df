#pragma once

#include <stdexcept>

namespace tandemtrim {

/// Returns the outlet's control; raises std::invalid_argument if the nib did not connect it.
template <class Control>
Control* required(Control* outlet) {
  if (outlet == nullptr) throw std::invalid_argument("the nib of the panel lacks a control");
  return outlet;
}

}  // namespace tandemtrim
