#include "host/portal/document_copy.hpp"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <glib.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include "host/portal/main_loop.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::size_t kPieceOfCopy = 262'144;
// Stays free for other programs.
constexpr std::uint64_t kRoomLeft = 64U << 20U;

Failure notKept(int error) {
  return Failure(
      Trouble::document,
      Fact("the document cannot be kept in [folder] until it is printed: [words]"_fact,
           {{"[folder]", std::string(g_get_tmp_dir())}, {"[words]", std::string(std::strerror(error))}}));
}

Failure notRead(const std::string& words) {
  return Failure(Trouble::document, Fact("the document cannot be read: [words]"_fact, {{"[words]", words}}));
}

FileDescriptor fileWithoutName() {
  constexpr int kOwn = 0600;
  const std::string folder = g_get_tmp_dir();
  FileDescriptor file(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kOwn));
  if (file.isOpen()) return file;
  // Not every file system supports files without a name.
  auto path = folder + "/tandem-trim-XXXXXX";
  file = FileDescriptor(mkostemp(path.data(), O_CLOEXEC));
  if (!file.isOpen()) throw notKept(errno);
  unlink(path.c_str());
  return file;
}

// Failure when there is no room for so many more bytes.
void refuseLackOfRoom(int file, off_t size) {
  struct statvfs room {};
  if (fstatvfs(file, &room) != 0) return;
  const auto available = std::uint64_t{room.f_bavail} * room.f_frsize;
  if (available < kRoomLeft || available - kRoomLeft < static_cast<std::uint64_t>(size))
    throw notKept(ENOSPC);
}

void writeAll(int file, const char* data, std::size_t size) {
  while (size > 0) {
    const auto written = write(file, data, size);
    if (written < 0 && errno != EINTR) throw notKept(errno);
    if (written > 0) {
      data += written;
      size -= static_cast<std::size_t>(written);
    }
  }
}

// Waits until there is something to read; false once the copying must end.
bool isReadable(int source, int ending) {
  std::array<pollfd, 2> files{{{source, POLLIN, 0}, {ending, POLLIN, 0}}};
  while (poll(files.data(), files.size(), -1) < 0) {
    if (errno != EINTR) throw notRead(std::strerror(errno));
  }
  return files[1].revents == 0;
}

// nullopt once the copying must end.
std::optional<FileDescriptor> copyOf(int source, int ending) {
  struct stat status {};
  if (fstat(source, &status) != 0) throw notRead(std::strerror(errno));
  const bool isFile = S_ISREG(status.st_mode);
  if (!isFile && !S_ISFIFO(status.st_mode)) throw notRead("it is neither a file nor a pipe");
  auto copy = fileWithoutName();
  // Checked first, so that the disk is not filled in vain, and again for each piece, since a file can grow.
  refuseLackOfRoom(copy.get(), isFile ? status.st_size : 0);
  std::vector<char> piece(kPieceOfCopy);
  for (off_t place = 0; isReadable(source, ending);) {
    const auto size =
        isFile ? pread(source, piece.data(), piece.size(), place) : read(source, piece.data(), piece.size());
    if (size < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (size < 0) throw notRead(std::strerror(errno));
    if (size == 0) return copy;
    refuseLackOfRoom(copy.get(), size);
    writeAll(copy.get(), piece.data(), static_cast<std::size_t>(size));
    place += size;
  }
  return std::nullopt;
}

}  // namespace

struct DocumentCopy::Work {
  FileDescriptor document;
  // Readable once the copying must end.
  FileDescriptor ending{eventfd(0, EFD_CLOEXEC)};
  Done done;
  bool isEnded = false;
};

DocumentCopy::DocumentCopy(FileDescriptor document, Done done)
    : work_(std::make_shared<Work>(
          Work{std::move(document), FileDescriptor(eventfd(0, EFD_CLOEXEC)), std::move(done)})) {
  const auto deliver = [work = work_](FileDescriptor copy, const std::optional<Failure>& failure) {
    onMainLoop([work, copy = std::make_shared<FileDescriptor>(std::move(copy)), failure] {
      if (!work->isEnded) work->done(std::move(*copy), failure);
    });
  };
  try {
    if (!work_->ending.isOpen()) throw notRead(std::strerror(errno));
    std::thread([work = work_, deliver] {
      try {
        if (auto copy = copyOf(work->document.get(), work->ending.get())) deliver(std::move(*copy), {});
      } catch (const Failure& failure) {
        deliver(FileDescriptor(-1), failure);
      } catch (const std::exception& failure) {
        deliver(FileDescriptor(-1), notRead(failure.what()));
      }
    }).detach();
  } catch (const Failure& failure) {
    deliver(FileDescriptor(-1), failure);
  } catch (const std::system_error& failure) {
    deliver(FileDescriptor(-1), notRead(failure.what()));
  }
}

DocumentCopy::~DocumentCopy() {
  work_->isEnded = true;
  constexpr std::uint64_t kEnd = 1;
  static_cast<void>(!write(work_->ending.get(), &kEnd, sizeof kEnd));
}

}  // namespace tandemtrim::host
