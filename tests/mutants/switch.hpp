#pragma once
// Included first by every file that is mutated. Each place to mutate calls one of these functions, which
// behaves as the source says unless TANDEM_TRIM_MUTANT is the place's number or, for a condition, the next.
// TANDEM_TRIM_MUTANT_REACHED names a file of zeros: the byte at the number of each place that a program
// reaches becomes 1.
#include <cstddef>
#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mutants {

// Each program and module has its own switch; all write to the same file.
class Switch {
 public:
  Switch() {
    if (const char* number = std::getenv("TANDEM_TRIM_MUTANT"))
      active_ = static_cast<unsigned>(std::atoi(number));
    const char* const name = std::getenv("TANDEM_TRIM_MUTANT_REACHED");
    const int file = name == nullptr ? -1 : open(name, O_RDWR | O_CLOEXEC);
    if (file < 0) return;
    struct stat status {};
    fstat(file, &status);
    size_ = static_cast<std::size_t>(status.st_size);
    void* const mapped = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (mapped == MAP_FAILED) {
      size_ = 0;
    } else {
      reached_ = static_cast<unsigned char*>(mapped);
    }
  }
  bool is(unsigned number) {
    if (number < size_) reached_[number] = 1;
    return number == active_;
  }

 private:
  unsigned active_ = 0;
  std::size_t size_ = 0;
  unsigned char* reached_ = nullptr;
};

inline bool is(unsigned number) {
  static Switch theSwitch;
  return theSwitch.is(number);
}

// Opens the file while the program is loaded, before it drops any privilege.
inline const bool kIsReady = (is(0), true);

template <class Condition>
bool condition(unsigned number, Condition&& value) {
  const bool asWritten = static_cast<bool>(value);
  return is(number) || (asWritten && !is(number + 1));
}
template <class Number>
Number constant(unsigned number, Number value) {
  return is(number) ? static_cast<Number>(value + 1) : value;
}
inline bool boolean(unsigned number, bool value) { return is(number) != value; }
inline const char* text(unsigned number, const char* value, const char* other) {
  return is(number) ? other : value;
}

#define MUTANTS_OPERATOR(name, asWritten, mutated)                     \
  template <class Left, class Right>                                   \
  decltype(auto) name(unsigned number, Left&& left, Right&& right) {   \
    return is(number) ? (left mutated right) : (left asWritten right); \
  }
MUTANTS_OPERATOR(less, <, <=)
MUTANTS_OPERATOR(lessOrEqual, <=, <)
MUTANTS_OPERATOR(greater, >, >=)
MUTANTS_OPERATOR(greaterOrEqual, >=, >)
MUTANTS_OPERATOR(plus, +, -)
MUTANTS_OPERATOR(minus, -, +)
MUTANTS_OPERATOR(times, *, /)
MUTANTS_OPERATOR(leftShift, <<, >>)
MUTANTS_OPERATOR(rightShift, >>, <<)
MUTANTS_OPERATOR(bitOr, |, &)
MUTANTS_OPERATOR(bitAnd, &, |)
MUTANTS_OPERATOR(add, +=, -=)
#undef MUTANTS_OPERATOR

}  // namespace mutants
