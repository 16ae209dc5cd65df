#include "host/cups/ppd.hpp"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// The PPD that libcups opened; Failure, with libcups's error, when it opened none.
PpdHandle wellFormed(ppd_file_t* opened, const std::string& name) {
  PpdHandle ppd(opened);
  if (ppd) return ppd;
  int line = 0;
  const auto status = ppdLastError(&line);
  throw Failure(Trouble::details,
                Fact("the PPD file " + name + " is malformed, line " + std::to_string(line) + ": " +
                         ppdErrorString(status),
                     kUselessPpd, {{"[words]", ppdErrorString(status)}}),
                "; correct it (cupstestppd lists its mistakes) or name another with --ppd");
}

Failure unreadable(const std::string& name, const std::string& reason) {
  return Failure(Trouble::details, Fact("the PPD file " + name + " cannot be read: " + reason, kUselessPpd,
                                        {{"[words]", reason}}));
}

// zlib's message is "<fd:5>: unexpected end of file".
std::string withoutFile(const std::string& reason) {
  const auto end = reason.find(">: ");
  return end == std::string::npos ? reason : reason.substr(end + 3);
}

using PackedFile = std::unique_ptr<gzFile_s, EndedBy<gzclose_r>>;

// An unpacked copy of the file. libcups unpacks, too, but accepts a truncated file and unpacks without a
// limit.
FileDescriptor unpacked(FileDescriptor packed, const std::string& name) {
  FileDescriptor copy(memfd_create("ppd", MFD_CLOEXEC));
  const PackedFile source(gzdopen(packed.get(), "rb"));
  if (!copy.isOpen() || !source) throw unreadable(name, std::strerror(errno));
  packed.release();
  std::array<char, 65536> piece{};
  int bytes = 0;
  for (long size = 0; (bytes = gzread(source.get(), piece.data(), piece.size())) > 0;) {
    size += bytes;
    if (size > kLargestPpd) throw tooLargePpd("the PPD file " + name);
    if (write(copy.get(), piece.data(), static_cast<std::size_t>(bytes)) != bytes)
      throw unreadable(name, std::strerror(errno));
  }
  int error = Z_OK;
  const std::string reason = gzerror(source.get(), &error);
  if (error != Z_OK) throw DamagedPpd(name, withoutFile(reason));
  lseek(copy.get(), 0, SEEK_SET);
  return copy;
}

}  // namespace

DamagedPpd::DamagedPpd(const std::string& name, const std::string& reason)
    : Failure(Trouble::details,
              Fact("the PPD file " + name + " is damaged: " + reason, kUselessPpd, {{"[words]", reason}}),
              "; correct it or name another with --ppd") {}

PpdHandle openPpd(const std::string& path, const std::string& name) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw Failure(Trouble::details, "the PPD file " + name + " is a folder", "; name the PPD file itself");
  }
  FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen()) throw unreadable(name, std::strerror(errno));
  return readPpd(std::move(file), name);
}

PpdHandle readPpd(FileDescriptor file, const std::string& name) {
  lseek(file.get(), 0, SEEK_SET);
  auto plain = unpacked(std::move(file), name);
  // libcups takes a read error for the end of the file. Both descriptors share a position, which then is
  // before the end.
  const FileDescriptor seen(dup(plain.get()));
  errno = 0;
  auto ppd = wellFormed(ppdOpenFd(plain.release()), name);
  // libcups silently leaves out a value for which it has no memory.
  if (errno == ENOMEM) throw unreadable(name, std::strerror(ENOMEM));
  if (lseek(seen.get(), 0, SEEK_CUR) != lseek(seen.get(), 0, SEEK_END))
    throw unreadable(name, "a part of it was not read");
  return ppd;
}

Failure tooLargePpd(const std::string& what) {
  return Failure(Trouble::details, Fact(what + " is larger than " + std::to_string(kLargestPpd >> 20) + " MB",
                                        "the printer's PPD file is larger than [size] MB"_fact,
                                        {{"[size]", std::to_string(kLargestPpd >> 20)}}));
}

std::vector<std::string> dialogExtensions(ppd_file_t& ppd) {
  constexpr const char* attributeName = "APDialogExtension";
  std::vector<std::string> names;
  for (const auto* attribute = ppdFindAttr(&ppd, attributeName, nullptr); attribute != nullptr;
       attribute = ppdFindNextAttr(&ppd, attributeName, nullptr)) {
    std::filesystem::path path = attribute->value;
    if (!path.has_filename()) path = path.parent_path();
    const auto name = path.filename().string();
    if (!name.empty() && name != "." && name != "..") names.push_back(name);
  }
  return names;
}

Options asSpelled(ppd_file_t* ppd, Options options) {
  for (auto& [keyword, value] : options) {
    const auto* const known = ppdFindOption(ppd, keyword.c_str());
    if (known != nullptr) keyword = known->keyword;
  }
  return options;
}

}  // namespace tandemtrim::host
