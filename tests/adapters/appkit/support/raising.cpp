#include "tests/adapters/appkit/support/raising.hpp"

#include <new>
#include <stdexcept>

namespace tandemtrim::raising {

void badAlloc() { throw std::bad_alloc(); }
void invalidArgument() { throw std::invalid_argument("a %@ 100 %n"); }
void outOfRange() { throw std::out_of_range("a range"); }
void runtimeError() { throw std::runtime_error("something else"); }

}  // namespace tandemtrim::raising
