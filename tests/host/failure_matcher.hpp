#pragma once

#include <string>

#include <gmock/gmock.h>

#include "host/failure.hpp"

namespace tandemtrim::host::test {

/// What running `call` failed with; a test failure when it did not fail.
template <class Call>
Failure failureOf(Call call) {
  try {
    call();
  } catch (const Failure& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing failed";
  return Failure("nothing failed", -1);
}

}  // namespace tandemtrim::host::test
