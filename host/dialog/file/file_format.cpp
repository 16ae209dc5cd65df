#include "host/dialog/file/file_format.hpp"

#include <algorithm>
#include <array>

#include <unistd.h>

namespace tandemtrim::host {
namespace {

struct FormatRow {
  FileFormat format;
  const char* name;
  const char* title;
  std::string_view beginning;
};

constexpr std::array<FormatRow, 3> kFormats{{{FileFormat::pdf, "pdf", "PDF", "%PDF-"},
                                             {FileFormat::postScript, "ps", "PostScript", "%!PS"},
                                             {FileFormat::svg, "svg", "SVG", "<?xml"}}};

const FormatRow& formatRowOf(FileFormat format) {
  return *std::ranges::find(kFormats, format, &FormatRow::format);
}

}  // namespace

const char* nameOf(FileFormat format) { return formatRowOf(format).name; }

const char* titleOf(FileFormat format) { return formatRowOf(format).title; }

std::optional<FileFormat> formatOf(std::string_view beginning) {
  const auto* const row = std::ranges::find_if(
      kFormats, [&](const FormatRow& each) { return beginning.starts_with(each.beginning); });
  return row == kFormats.end() ? std::nullopt : std::optional(row->format);
}

// CUPS converts no document to application/postscript, but depends on a program that makes it of PDF.
std::vector<std::string> converter(std::optional<FileFormat> from, FileFormat to) {
  std::vector<std::string> command;
  if (to == FileFormat::pdf) {
    command = {"/usr/sbin/cupsfilter", "-m", "application/pdf", "%f"};
  } else if (to == FileFormat::postScript && from == FileFormat::pdf) {
    command = {"/usr/bin/pdftops", "%f", "-"};
  }
  if (!command.empty() && access(command.front().c_str(), X_OK) != 0) command.clear();
  return command;
}

std::vector<FileFormat> formatsFor(std::optional<FileFormat> document) {
  std::vector<FileFormat> formats;
  for (const auto& row : kFormats) {
    if (row.format == FileFormat::svg) continue;
    if (row.format == document || !converter(document, row.format).empty()) formats.push_back(row.format);
  }
  return formats;
}

}  // namespace tandemtrim::host
