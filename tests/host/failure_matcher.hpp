#pragma once

#include <regex>
#include <set>
#include <string>
#include <string_view>

#include <gmock/gmock.h>

#include "host/failure.hpp"

namespace tandemtrim::test {

/// The fact as a dialog shows it in English. Fails the test if a placeholder is left without words.
inline std::string inADialog(const host::Fact& fact) {
  static const std::regex placeholder("\\[[a-z]+\\]");
  std::set<std::string> placeholders;
  auto words = fact.in([&](std::string_view english) {
    std::string text(english);
    for (std::sregex_iterator found(text.begin(), text.end(), placeholder), end; found != end; ++found)
      placeholders.insert(found->str());
    return text;
  });
  for (const auto& each : placeholders) EXPECT_THAT(words, testing::Not(testing::HasSubstr(each)));
  return words;
}

/// Returns the Failure that `call` throws. Fails the test if it throws nothing, or as inADialog() does.
template <class Call>
host::Failure failureOf(Call call) {
  try {
    call();
  } catch (const host::Failure& failure) {
    inADialog(failure.fact());
    return failure;
  }
  ADD_FAILURE() << "nothing failed";
  return host::Failure("nothing failed", -1);
}

}  // namespace tandemtrim::test
