#pragma once

#include <stdexcept>

namespace tandemtrim {

/// The control that an outlet refers to. An empty outlet raises std::invalid_argument: no list or table takes
/// a missing control.
template <class Control>
Control* required(Control* outlet) {
  if (outlet == nullptr) throw std::invalid_argument("the nib of the panel lacks a control");
  return outlet;
}

}  // namespace tandemtrim
