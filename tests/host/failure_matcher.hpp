#pragma once

#include <string>

#include <gmock/gmock.h>

#include "host/failure.hpp"

namespace tandemtrim::test {

/// Returns the Failure that `call` throws. Fails the test if it throws nothing.
template <class Call>
host::Failure failureOf(Call call) {
  try {
    call();
  } catch (const host::Failure& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing failed";
  return host::Failure("nothing failed", -1);
}

}  // namespace tandemtrim::test
