#pragma once
// Read before every source of a build with mutants. The places of the mutated sources call these functions,
// which do as written unless the place's number is the one in TANDEM_TRIM_MUTANT. Where TANDEM_TRIM_REACHED
// names a file, the numbers of the places that the program came to are added to it.
#include <bitset>
#include <cstdlib>
#include <fstream>

namespace mutants {

class Switch {
 public:
  bool is(unsigned number) {
    if (file_ != nullptr) reached_.set(number);
    return number == active_;
  }
  ~Switch() {
    if (file_ == nullptr) return;
    std::ofstream out(file_, std::ios::app);
    for (unsigned number = 0; number < reached_.size(); ++number) {
      if (reached_.test(number)) out << number << '\n';
    }
  }

 private:
  static unsigned active() {
    const char* number = std::getenv("TANDEM_TRIM_MUTANT");
    return number == nullptr ? 0 : static_cast<unsigned>(std::atoi(number));
  }
  const char* file_ = std::getenv("TANDEM_TRIM_REACHED");
  unsigned active_ = active();
  std::bitset<32768> reached_;
};

inline bool is(unsigned number) {
  static Switch theSwitch;
  return theSwitch.is(number);
}

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
