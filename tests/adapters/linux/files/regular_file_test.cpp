#include "adapters/linux/files/regular_file.hpp"

#include <filesystem>
#include <iterator>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::platform::linux {
namespace {

using test::TemporaryFolder;
using testing::Optional;

TEST(RegularFile, IsReadByteForByte) {
  const TemporaryFolder folder;
  const std::string bytes("a\0\r\n\xFF", 5);
  EXPECT_THAT(contentsOfRegularFile(folder.write("file", bytes), 100), Optional(bytes));
  EXPECT_THAT(contentsOfRegularFile(folder.write("empty", ""), 100), Optional(std::string()));
}

TEST(RegularFile, IsReadUpToTheLimit) {
  const TemporaryFolder folder;
  const auto path = folder.write("file", "12345");
  EXPECT_THAT(contentsOfRegularFile(path, 5), Optional(std::string("12345")));
  EXPECT_EQ(contentsOfRegularFile(path, 4), std::nullopt);
}

TEST(RegularFile, SaysWhyItIsRefused) {
  const TemporaryFolder folder;
  const auto path = folder.write("file", "12345");
  std::string fault;
  contentsOfRegularFile(path, 4, &fault);
  EXPECT_EQ(fault, "longer than 4 bytes");
  for (const auto& unreadable : {folder.path().string(), path + ".missing", std::string("/proc/self/mem")}) {
    fault.clear();
    contentsOfRegularFile(unreadable, 100, &fault);
    EXPECT_EQ(fault, "cannot be read") << unreadable;
  }
  fault = "untouched";
  contentsOfRegularFile(path, 5, &fault);
  EXPECT_EQ(fault, "untouched");
}

TEST(RegularFile, IsClosedWhenItIsRead) {
  const TemporaryFolder folder;
  const auto path = folder.write("file", "12345");
  const auto openFiles = [] {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
  };
  const auto before = openFiles();
  for (const std::size_t limit : {4U, 5U}) contentsOfRegularFile(path, limit);
  contentsOfRegularFile(folder.path(), 5);
  EXPECT_EQ(openFiles(), before);
}

TEST(RegularFile, IsRefusedWhereItIsMissingOrOfAnotherKind) {
  const TemporaryFolder folder;
  const auto pipe = (folder.path() / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const auto& path :
       {pipe, folder.path().string(), pipe + ".missing", std::string(), std::string("/dev/zero")}) {
    EXPECT_EQ(contentsOfRegularFile(path, 100), std::nullopt) << path;
  }
}

TEST(RegularFile, IsRefusedWhenReadingFails) {
  // This is a regular file, but no process can read its first page.
  EXPECT_EQ(contentsOfRegularFile("/proc/self/mem", 100), std::nullopt);
}

}  // namespace
}  // namespace tandemtrim::platform::linux
