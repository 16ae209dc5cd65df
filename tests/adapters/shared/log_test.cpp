#include "platform/log.hpp"

#include <vector>

#include <gmock/gmock.h>
#include <syslog.h>

namespace tandemtrim::platform {
namespace {

// A line of the system log as a user reads it on standard error.
std::string logged(std::string_view format, const std::vector<std::string>& list) {
  openlog("log-test", LOG_PERROR, LOG_USER);
  testing::internal::CaptureStderr();
  NSLog(format, list);
  closelog();
  return testing::internal::GetCapturedStderr();
}

TEST(Log, ShowsTheListOnOneLine) {
  EXPECT_EQ(logged("keys:=NSArray(%@)", {"MVTandemTrim", "MVTopMargin"}),
            "log-test: keys:=NSArray((MVTandemTrim, MVTopMargin))\n");
  EXPECT_EQ(logged("%@", {"a", "b", "c"}), "log-test: (a, b, c)\n");
  EXPECT_EQ(logged("%@", {}), "log-test: ()\n");
}

TEST(Log, QuotesAmbiguousItems) {
  EXPECT_EQ(logged("%@", {"", "a b", "a,b", "a\"b", "a\\b", "\xC3\xA4"}),
            "log-test: (\"\", \"a b\", \"a,b\", \"a\\\"b\", \"a\\\\b\", \"\xC3\xA4\")\n");
}

TEST(Log, LeavesWordsAndPathsWithoutQuotes) {
  std::vector<std::string> items{"first"};
  for (int byte = 0; byte < 256; ++byte) items.emplace_back(1, static_cast<char>(byte));
  items.emplace_back("last");
  const auto line = logged("%@", items);
  std::string bare;
  for (const auto& item : items) {
    if (item.size() == 1 && line.find(", " + item + ", ") != std::string::npos) bare += item;
  }
  EXPECT_EQ(bare, "$-./0123456789:ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
}

TEST(Log, WritesControlCharactersByTheirNumber) {
  EXPECT_EQ(logged("%@", {"a\nb\x1B\x7F"}), "log-test: (\"a\\012b\\033\\177\")\n");
}

TEST(Log, ReplacesEachPlaceholderByTheList) { EXPECT_EQ(logged("%@-%@", {"a"}), "log-test: (a)-(a)\n"); }

TEST(Log, InterpretsNoOtherPercentSign) {
  EXPECT_EQ(logged("100% %s %n %m %d%%", {"a"}), "log-test: 100% %s %n %m %d%%\n");
  EXPECT_EQ(logged("%@ %", {"%s", "%n", "%@"}), "log-test: (\"%s\", \"%n\", \"%@\") %\n");
}

}  // namespace
}  // namespace tandemtrim::platform
