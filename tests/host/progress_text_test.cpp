#include "host/progress_text.hpp"

#include <gtest/gtest.h>

namespace tandemtrim::host {
namespace {

TEST(ProgressText, ShowsTheShareOrTheAmount) {
  EXPECT_EQ(progressText("a.pdf", 75'000'000, 150'000'000), "a.pdf: 50 % of 150 MB sent");
  EXPECT_EQ(progressText("(stdin)", 75'000'000, std::nullopt), "(stdin): 75 MB sent");
  EXPECT_EQ(progressText("growing.pdf", 200'000'000, 150'000'000), "growing.pdf: 100 % of 150 MB sent");
  EXPECT_EQ(progressText("a.pdf", 5, 0), "a.pdf: 0 MB sent");
  EXPECT_EQ(progressText("a.pdf", 149'999'999, 150'000'000), "a.pdf: 99 % of 150 MB sent");
  EXPECT_EQ(progressText("a.pdf", 150'000'000, 150'000'000), "a.pdf: 100 % of 150 MB sent");
  const auto german = [](std::string_view) { return std::string("[percent] % von [size] MB: [name]"); };
  EXPECT_EQ(progressText("[size].pdf", 75'000'000, 150'000'000, german), "50 % von 150 MB: [size].pdf");
}

}  // namespace
}  // namespace tandemtrim::host
