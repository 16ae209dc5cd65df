#include <cstddef>
#include <cstdint>

#include "fuzz/support/target.hpp"

// libFuzzer calls this with each of its random inputs.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tandemtrim::fuzz::examine({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
