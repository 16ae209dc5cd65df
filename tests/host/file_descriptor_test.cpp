#include "host/file_descriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace tandemtrim::host {
namespace {

bool isOpenInTheSystem(int file) { return fcntl(file, F_GETFD) >= 0; }

TEST(AFileDescriptor, ClosesItsFileOnce) {
  int file = -1;
  {
    FileDescriptor first(open("/dev/null", O_RDONLY | O_CLOEXEC));
    file = first.get();
    ASSERT_TRUE(first.isOpen());
    {
      const FileDescriptor second(std::move(first));
      EXPECT_EQ(second.get(), file);
      EXPECT_TRUE(isOpenInTheSystem(file));
    }
    EXPECT_FALSE(isOpenInTheSystem(file));
    // Gets the same number, which is not the first one's any more.
    ASSERT_EQ(open("/dev/null", O_RDONLY | O_CLOEXEC), file);
  }
  EXPECT_TRUE(isOpenInTheSystem(file));
  close(file);
}

TEST(AFileDescriptor, ClosesTheFileThatAnotherReplaces) {
  FileDescriptor kept(open("/dev/null", O_RDONLY | O_CLOEXEC));
  const int before = kept.get();
  int now = -1;
  {
    FileDescriptor other(open("/dev/null", O_RDONLY | O_CLOEXEC));
    now = other.get();
    kept = std::move(other);
  }
  EXPECT_EQ(kept.get(), now);
  EXPECT_TRUE(isOpenInTheSystem(now));
  EXPECT_FALSE(isOpenInTheSystem(before));
}

TEST(AFileDescriptor, LeavesAReleasedFileOpen) {
  const int file = FileDescriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)).release();
  EXPECT_TRUE(isOpenInTheSystem(file));
  close(file);
}

TEST(AFileDescriptor, MayHaveTheNumberOfStandardInput) {
  FileDescriptor standardInput(STDIN_FILENO);
  EXPECT_TRUE(standardInput.isOpen());
  EXPECT_FALSE(FileDescriptor(-1).isOpen());
  EXPECT_EQ(standardInput.release(), STDIN_FILENO);
  EXPECT_FALSE(standardInput.isOpen());
}

}  // namespace
}  // namespace tandemtrim::host
