#pragma once

#include <string>
#include <vector>

namespace tandemtrim::test {

/// The pieces of random texts for a margin box: digits, characters like digits, and others.
inline const std::vector<std::string> kTextPieces{"0",
                                                  "1",
                                                  "9",
                                                  "5",
                                                  "00",
                                                  "-",
                                                  "+",
                                                  " ",
                                                  ".",
                                                  ",",
                                                  "a",
                                                  "mm",
                                                  "%n",
                                                  "\xEF\xBC\x97",  // full-width digits
                                                  "\xEF\xBC\x90",
                                                  "\xF0\x9F\x98\x80",  // a character of two UTF-16 units
                                                  "99999999999999999999"};

}  // namespace tandemtrim::test
