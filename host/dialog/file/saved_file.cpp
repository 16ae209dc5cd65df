#include "host/dialog/file/saved_file.hpp"

#include <filesystem>
#include <utility>

#include <giomm/cancellable.h>
#include <giomm/error.h>
#include <giomm/file.h>
#include <giomm/fileinfo.h>
#include <giomm/fileoutputstream.h>

#include "host/dialog/file/conversion.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

Failure notSaved(const std::string& name, const std::string& reason) {
  return Failure(Trouble::userMessage,
                 Fact(FactText{kNotSavedText}, {{"[file]", name}, {"[reason]", reason}}));
}

// A link stays; its target is replaced.
Glib::RefPtr<Gio::File> fileAt(const std::string& uri) {
  auto file = Gio::File::create_for_uri(uri);
  std::error_code unresolved;
  const auto path = std::filesystem::weakly_canonical(file->get_path(), unresolved);
  return unresolved || path.empty() ? file : Gio::File::create_for_path(path);
}

// Without its former mode the file stays private.
void restoreMode(const Glib::RefPtr<Gio::File>& file, std::uint32_t mode) {
  try {
    file->set_attribute_uint32("unix::mode", mode, Gio::FileQueryInfoFlags::NONE);
  } catch (const Glib::Error&) {
    return;
  }
}

// None if there is a file already.
Glib::RefPtr<Gio::FileOutputStream> newFile(const Glib::RefPtr<Gio::File>& file) {
  try {
    return file->create_file();
  } catch (const Gio::Error& failure) {
    if (failure.code() != Gio::Error::EXISTS) throw;
    return {};
  }
}

// A new file, in its place or beside an old one, which it replaces in finish(). Without finish() it is
// removed.
class Replacement {
 public:
  explicit Replacement(const Glib::RefPtr<Gio::File>& file) : stream_(newFile(file)) {
    if (stream_) {
      inItsPlace_ = file;
      return;
    }
    mode_ = file->query_info("unix::mode")->get_attribute_uint32("unix::mode");
    old_ = file;
    stream_ = file->replace("", false,
                            Gio::File::CreateFlags::REPLACE_DESTINATION | Gio::File::CreateFlags::PRIVATE);
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (isFinished_) return;
    const auto cancelled = Gio::Cancellable::create();
    cancelled->cancel();
    g_output_stream_close(G_OUTPUT_STREAM(stream_->gobj()), cancelled->gobj(), nullptr);
    if (inItsPlace_) g_file_delete(inItsPlace_->gobj(), nullptr, nullptr);
  }

  void write(std::span<const char> piece) {
    gsize written = 0;
    stream_->write_all(piece.data(), piece.size(), written);
    bytes_ += written;
  }
  /// Replaces the old file, as the last step that can fail; returns the new one's size in bytes.
  std::uint64_t finish() {
    if (const auto size = writtenSize(); size != bytes_)
      throw Gio::Error(Gio::Error::FAILED, std::to_string(size) + " ≠ " + std::to_string(bytes_));
    stream_->close();
    isFinished_ = true;
    if (old_) restoreMode(old_, mode_);
    return bytes_;
  }

 private:
  // The size that the file system reports; some remote ones report none. Not by giomm's query_info(), which
  // leaks the attribute's name.
  std::uint64_t writtenSize() {
    GError* failure = nullptr;
    auto* const info =
        g_file_output_stream_query_info(stream_->gobj(), G_FILE_ATTRIBUTE_STANDARD_SIZE, nullptr, &failure);
    if (info != nullptr) return static_cast<std::uint64_t>(Glib::wrap(info)->get_size());
    if (!g_error_matches(failure, G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED))
      Glib::Error::throw_exception(failure);
    g_error_free(failure);
    return bytes_;
  }

  Glib::RefPtr<Gio::FileOutputStream> stream_;
  Glib::RefPtr<Gio::File> inItsPlace_;  // the new file; null if there is an old one
  Glib::RefPtr<Gio::File> old_;         // null if there is none
  std::uint32_t mode_ = 0;              // the old file's permissions
  std::uint64_t bytes_ = 0;
  bool isFinished_ = false;
};

std::uint64_t replace(const Glib::RefPtr<Gio::File>& file, Document& document,
                      const std::function<void()>& check) {
  Replacement replacement(file);
  document.read([&](std::span<const char> piece) {
    check();
    replacement.write(piece);
    return true;
  });
  return replacement.finish();
}

}  // namespace

SavedFile saveToFile(Document& document, const FileTarget& target, const std::function<void()>& check) {
  const auto file = fileAt(target.uri);
  std::string name = file->get_parse_name();
  // Writing to a pipe would block.
  if (const auto type = file->query_file_type();
      type != Gio::FileType::UNKNOWN && type != Gio::FileType::REGULAR)
    throw Failure(Trouble::userMessage, Fact(FactText{kNoFileText}, {{"[file]", name}}));
  try {
    std::uint64_t bytes = 0;
    if (formatOf(document.beginning()) == target.format) {
      bytes = replace(file, document, check);
    } else {
      const Conversion conversion(document, target.format, check);
      Document converted(conversion.file());
      bytes = replace(file, converted, check);
    }
    return {std::move(name), bytes};
  } catch (const Glib::Error& failure) {
    throw notSaved(name, failure.what());
  }
}

}  // namespace tandemtrim::host
