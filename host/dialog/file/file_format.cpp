#include "host/dialog/file/file_format.hpp"

#include <algorithm>
#include <array>

#include <unistd.h>

namespace tandemtrim::host {
namespace {

struct Row {
  FileFormat format;
  const char* name;
  const char* title;
  std::string_view beginning;
};

constexpr std::array<Row, 2> kRows{
    {{FileFormat::pdf, "pdf", "PDF", "%PDF-"}, {FileFormat::postScript, "ps", "PostScript", "%!PS"}}};

const Row& rowOf(FileFormat format) { return *std::ranges::find(kRows, format, &Row::format); }

}  // namespace

const char* nameOf(FileFormat format) { return rowOf(format).name; }

const char* titleOf(FileFormat format) { return rowOf(format).title; }

std::optional<FileFormat> formatOf(std::string_view beginning) {
  const auto* const row =
      std::ranges::find_if(kRows, [&](const Row& known) { return beginning.starts_with(known.beginning); });
  return row == kRows.end() ? std::nullopt : std::optional(row->format);
}

// CUPS has no filter from PDF to PostScript, but depends on a program for it.
std::vector<std::string> converter(std::optional<FileFormat> from, FileFormat to) {
  std::vector<std::string> command;
  if (to == FileFormat::pdf) {
    command = {"/usr/sbin/cupsfilter", "-m", "application/pdf", "%f"};
  } else if (from == FileFormat::pdf) {
    command = {"/usr/bin/pdftops", "%f", "-"};
  }
  if (!command.empty() && access(command.front().c_str(), X_OK) != 0) command.clear();
  return command;
}

std::vector<FileFormat> formatsFor(std::optional<FileFormat> document) {
  std::vector<FileFormat> formats;
  for (const auto& row : kRows) {
    if (row.format == document || !converter(document, row.format).empty()) formats.push_back(row.format);
  }
  return formats;
}

}  // namespace tandemtrim::host
