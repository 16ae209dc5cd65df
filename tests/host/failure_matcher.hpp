#pragma once

#include <string>

#include <gmock/gmock.h>

#include "host/failure.hpp"

namespace tandemtrim::test {

/// Returns the failure that `call` raises. The test fails if it raises none.
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
