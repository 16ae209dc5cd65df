#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// A format of the files that the dialog saves.
enum class FileFormat { pdf, postScript, svg };

/// GTK's name of the format, which is also the extension of its files.
const char* nameOf(FileFormat format);
/// The name that users know.
const char* titleOf(FileFormat format);

/// The format of a document with this beginning; nullopt for any other format.
std::optional<FileFormat> formatOf(std::string_view beginning);

/// The program that converts documents of the format `from` (nullopt means any other format) into `to`, and
/// its arguments; "%f" is the document's file. It writes to standard output. Empty when the print system has
/// no such program.
std::vector<std::string> converter(std::optional<FileFormat> from, FileFormat to);

/// The formats in which documents of this format can be saved on this system. SVG is not among them: only
/// programs that draw their documents can make it.
std::vector<FileFormat> formatsFor(std::optional<FileFormat> document);

}  // namespace tandemtrim::host
