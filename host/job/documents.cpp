#include "host/job/documents.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace tandemtrim::host {
namespace {

constexpr std::size_t kPiece = 65536;
constexpr std::size_t kBeginning = 8;

}  // namespace

Document::Document(const std::string& file) : place_(file), buffer_(kPiece) {
  if (file == "-") {
    name_ = "(stdin)";
    place_ = "standard input";
    file_ = stdin;
  } else if (file.empty()) {
    throw Failure(Trouble::document, Fact("the name of a file is empty"_fact, {}),
                  "; nothing was sent. Name a file that exists and that you may read");
  } else {
    name_ = std::filesystem::path(file).filename().string();
    opened_.reset(std::fopen(file.c_str(), "rb"));
    if (!opened_) throw unreadable();
    file_ = opened_.get();
  }
  begin();
}

Document::Document(FileDescriptor file, const std::string& name)
    : place_(name), name_(name), opened_(fdopen(file.get(), "rb")), buffer_(kPiece) {
  if (!opened_) throw unreadable();
  file.release();
  file_ = opened_.get();
  std::rewind(file_);
  begin();
}

void Document::begin() {
  start_ = ftello(file_);
  struct stat status {};
  // The kernel's own files have the size 0, whatever they contain.
  if (fstat(fileno(file_), &status) == 0 && S_ISREG(status.st_mode) && status.st_size > start_)
    size_ = static_cast<std::uint64_t>(status.st_size - start_);
  fill();
  beginning_.assign(buffer_.data(), std::min(filled_, kBeginning));
  if (filled_ == 0)
    throw Failure(Trouble::document, Fact(place_ + " is empty", "[file] is empty"_fact, {{"[file]", name_}}),
                  "; nothing was sent. Print a document that is not empty");
}

Failure Document::unreadable() const {
  return Failure(
      Trouble::document,
      Fact(place_ + " cannot be read: " + std::strerror(errno), "[file] cannot be read: [words]"_fact,
           {{"[file]", place_}, {"[words]", std::strerror(errno)}}),
      begun_ ? "" : "; nothing was sent. Name a file that exists and that you may read");
}

void Document::fill() {
  filled_ = std::fread(buffer_.data(), 1, buffer_.size(), file_);
  wasInterrupted_ = std::ferror(file_) != 0 && errno == EINTR;
  if (wasInterrupted_) return std::clearerr(file_);
  if (std::ferror(file_) != 0) throw unreadable();
}

void Document::keep() {
  if (start_ >= 0) return;
  std::unique_ptr<std::FILE, Closed> copy(std::tmpfile());
  const auto write = [&](std::span<const char> piece) {
    return std::fwrite(piece.data(), 1, piece.size(), copy.get()) == piece.size();
  };
  if (!copy || !read(write) || std::fflush(copy.get()) != 0) {
    throw Failure(Trouble::other,
                  Fact(place_ + " cannot be kept until it is printed: " + std::strerror(errno),
                       "[file] cannot be kept until it is printed: [words]"_fact,
                       {{"[file]", name_}, {"[words]", std::strerror(errno)}}),
                  "; nothing was sent. Make room in " + std::filesystem::temp_directory_path().string() +
                      " or name a file");
  }
  opened_ = std::move(copy);
  file_ = opened_.get();
  size_ = static_cast<std::uint64_t>(ftello(file_));
  start_ = 0;
}

bool Document::read(const std::function<bool(std::span<const char>)>& take) {
  if (std::exchange(begun_, true)) {
    if (fseeko(file_, start_, SEEK_SET) != 0) throw unreadable();
    fill();
  }
  for (; filled_ > 0 || wasInterrupted_; fill()) {
    if (!take(std::span(buffer_.data(), filled_))) return false;
  }
  return true;
}

// Not by name, since that may be another file now.
FileDescriptor Document::openAgain() const {
  if (start_ != 0) return FileDescriptor(-1);
  return FileDescriptor(
      open(("/proc/self/fd/" + std::to_string(fileno(file_))).c_str(), O_RDONLY | O_CLOEXEC));
}

std::vector<Document> openDocuments(const std::vector<std::string>& files) {
  return {files.begin(), files.end()};
}

}  // namespace tandemtrim::host
