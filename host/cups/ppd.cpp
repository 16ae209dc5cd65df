#include "host/cups/ppd.hpp"

#include <cstring>
#include <filesystem>

#include <unistd.h>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// The file as libcups reads it, or null.
PpdHandle wellFormed(ppd_file_t* opened, const std::string& name) {
  PpdHandle ppd(opened);
  if (ppd) return ppd;
  int line = 0;
  const auto status = ppdLastError(&line);
  throw Failure(
      Trouble::details,
      "the PPD file " + name + " is malformed, line " + std::to_string(line) + ": " + ppdErrorString(status),
      "; mend it (cupstestppd lists its mistakes) or name another by --ppd");
}

}  // namespace

PpdHandle openPpd(const std::string& path, const std::string& name) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw Failure(Trouble::details, "the PPD file " + name + " is a folder", "; name the PPD file itself");
  }
  if (access(path.c_str(), R_OK) != 0) {
    throw Failure(Trouble::details, "the PPD file " + name + " cannot be read: " + std::strerror(errno));
  }
  return wellFormed(ppdOpenFile(path.c_str()), name);
}

PpdHandle readPpd(int file, const std::string& name) {
  lseek(file, 0, SEEK_SET);
  return wellFormed(ppdOpenFd(file), name);
}

std::vector<std::string> dialogExtensions(ppd_file_t& ppd) {
  constexpr const char* attributeName = "APDialogExtension";
  std::vector<std::string> names;
  for (const auto* attribute = ppdFindAttr(&ppd, attributeName, nullptr); attribute != nullptr;
       attribute = ppdFindNextAttr(&ppd, attributeName, nullptr)) {
    std::filesystem::path path = attribute->value != nullptr ? attribute->value : "";
    if (!path.has_filename()) path = path.parent_path();
    const auto name = path.filename().string();
    if (!name.empty() && name != "." && name != "..") names.push_back(name);
  }
  return names;
}

Options asSpelled(ppd_file_t* ppd, Options options) {
  for (auto& [keyword, value] : options) {
    const auto* const known = ppd == nullptr ? nullptr : ppdFindOption(ppd, keyword.c_str());
    if (known != nullptr) keyword = known->keyword;
  }
  return options;
}

}  // namespace tandemtrim::host
