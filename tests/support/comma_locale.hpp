#pragma once

#include <clocale>
#include <cstdlib>

#include <gmock/gmock.h>

namespace tandemtrim::test {

/// Runs each test in a locale with a decimal comma; the build puts it into LOCALES.
class CommaLocaleTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { setenv("LOCPATH", LOCALES, 1); }
  static void TearDownTestSuite() { unsetenv("LOCPATH"); }

  void SetUp() override {
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    ASSERT_EQ(std::strtod("2,5", nullptr), 2.5);
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

}  // namespace tandemtrim::test
