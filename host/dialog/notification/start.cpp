#include "host/dialog/notification/start.hpp"

#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>

#include <gio/gio.h>
#include <sys/mman.h>
#include <unistd.h>

#include "host/file_descriptor.hpp"
#include "host/panel/own_module.hpp"

namespace tandemtrim::host {
namespace {

constexpr const char* kNotifier = "tandem-trim-notifier";

// A file in memory: unlike a pipe it needs no process at its other end, and unlike arguments others cannot
// read it.
FileDescriptor fileOf(std::string_view text) {
  FileDescriptor file(memfd_create(kNotifier, MFD_CLOEXEC));
  while (file.isOpen() && !text.empty()) {
    const auto written = write(file.get(), text.data(), text.size());
    if (written < 0) return FileDescriptor(-1);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  if (file.isOpen()) lseek(file.get(), 0, SEEK_SET);
  return file;
}

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};

}  // namespace

// The notifier does not inherit this program's outputs: a caller that reads them to the end would wait for
// it.
void startNotifier(const NotifierOrder& order, const Report& report) {
  const auto program = findOwnProgram(kNotifier);
  if (!program.fault.empty()) return report("no notification is shown: " + program.fault);
  if (program.path.empty()) return;
  auto input = fileOf(orderText(order));
  if (!input.isOpen()) return report("no notification is shown: " + std::string(std::strerror(errno)));
  const std::unique_ptr<GSubprocessLauncher, Unref> launcher(g_subprocess_launcher_new(
      static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE)));
  g_subprocess_launcher_set_cwd(launcher.get(), "/");
  g_subprocess_launcher_take_stdin_fd(launcher.get(), input.release());
  GError* error = nullptr;
  const std::unique_ptr<GSubprocess, Unref> started(
      g_subprocess_launcher_spawn(launcher.get(), &error, program.path.c_str(), nullptr));
  if (started) return;
  report("no notification is shown: " + std::string(error->message));
  g_error_free(error);
}

}  // namespace tandemtrim::host
