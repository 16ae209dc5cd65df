#include "host/dialog/file/conversion.hpp"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string_view>
#include <thread>
#include <vector>

#include <gio/gio.h>
#include <glib/gstdio.h>
#include <glibmm/fileutils.h>

#include "host/dialog/texts/texts.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{20};

template <class Type>
using Reference = std::unique_ptr<Type, decltype(&g_object_unref)>;

// Runs the program with its standard output in the file; returns whether it succeeds.
bool runInto(const std::string& file, const std::vector<std::string>& command,
             const std::function<void()>& check) {
  const Reference<GSubprocessLauncher> launcher(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDERR_SILENCE),
                                                g_object_unref);
  g_subprocess_launcher_set_stdout_file_path(launcher.get(), file.c_str());
  std::vector<const char*> words;
  words.reserve(command.size() + 1);
  for (const auto& word : command) words.push_back(word.c_str());
  words.push_back(nullptr);
  const Reference<GSubprocess> program(g_subprocess_launcher_spawnv(launcher.get(), words.data(), nullptr),
                                       g_object_unref);
  if (!program) return false;
  while (g_subprocess_get_identifier(program.get()) != nullptr) {
    try {
      check();
    } catch (...) {
      // On this signal a filter also ends the programs that it has started.
      g_subprocess_send_signal(program.get(), SIGTERM);
      throw;
    }
    std::this_thread::sleep_for(kBetweenLooks);
  }
  return g_subprocess_get_successful(program.get()) != FALSE;
}

std::string beginningOf(const std::string& file) {
  std::array<char, 8> beginning{};
  std::ifstream stream(file, std::ios::binary);
  stream.read(beginning.data(), beginning.size());
  return {beginning.data(), static_cast<std::size_t>(stream.gcount())};
}

// Whether a PDF file is encrypted. Such a file contains this keyword in plain text.
bool isProtected(const std::string& file) {
  constexpr std::string_view kEncrypted = "/Encrypt";
  const std::unique_ptr<GMappedFile, decltype(&g_mapped_file_unref)> mapped(
      g_mapped_file_new(file.c_str(), FALSE, nullptr), g_mapped_file_unref);
  if (!mapped) return false;
  const std::string_view content(g_mapped_file_get_contents(mapped.get()),
                                 g_mapped_file_get_length(mapped.get()));
  return content.find(kEncrypted) != std::string_view::npos;
}

}  // namespace

Conversion::Temporary::Temporary() { close(Glib::file_open_tmp(path, "tandem-trim-")); }

Conversion::Temporary::~Temporary() { g_unlink(path.c_str()); }

Conversion::Conversion(Document& document, FileFormat format, const std::function<void()>& check) {
  std::ofstream original(original_.path, std::ios::binary);
  document.read([&](std::span<const char> piece) {
    check();
    original.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    return !original.fail();
  });
  original.close();
  auto command = converter(formatOf(document.beginning()), format);
  for (auto& argument : command) {
    if (argument == "%f") argument = original_.path;
  }
  if (!original || command.empty() || !runInto(converted_.path, command, check) ||
      formatOf(beginningOf(converted_.path)) != format) {
    const bool isLocked = formatOf(document.beginning()) == FileFormat::pdf && isProtected(original_.path);
    throw Failure(Trouble::userMessage, Fact(FactText{isLocked ? kProtectedText : kNotConvertedText},
                                             {{"[format]", titleOf(format)}}));
  }
}

}  // namespace tandemtrim::host
