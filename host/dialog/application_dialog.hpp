#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/dialog/file/file_format.hpp"
#include "host/failure.hpp"
#include "host/file_descriptor.hpp"
#include "host/job/options.hpp"
#include "host/report.hpp"

/// The exports of the dialog's module for the service that shows the dialog to other programs.
namespace tandemtrim::host {

/// Settings or a page setup in GTK's form for other programs: lengths in millimetres.
using Entries = std::map<std::string, std::variant<std::string, double>>;

/// Another program's request for a dialog. Its options count like those of the command line; the dialog's
/// tabs start with them and with its scale.
struct DialogRequest {
  /// The name of the program's desktop file; empty where it is unknown.
  std::string application;
  std::string title;
  /// The program's window: "x11:" with its number in hexadecimal digits, or "wayland:" with its exported
  /// handle. Any other text means no window.
  std::string parent;
  bool isModal = true;
  /// The title of the button Print; if empty, GTK's own.
  std::string acceptLabel;
  /// The formats in which the program can make a file.
  std::vector<FileFormat> formats;
  bool hasCurrentPage = false;
  bool hasSelection = false;
  /// The printer to start with, if there is one of this name.
  std::optional<std::string> printer;
  /// Copies, pages, order, pages per side, paper and orientation, as a job's options.
  Options options;
  /// In percent.
  std::optional<double> scale;
  /// The document's name without folders; empty where it is unknown.
  std::string document;
};

/// The user's choice, for the program that lays the document out.
struct DialogChoice {
  Entries settings;
  Entries pageSetup;
};

/// How a dialog has ended.
enum class DialogEnd { printed, cancelled, failed };

/// A print dialog for another program. Once the user has chosen how to print, the dialog is hidden and keeps
/// its settings, until the program has laid its document out. If the document cannot be printed, the dialog
/// is shown again: the user can correct the settings and print again, or save the document.
class ApplicationDialog {
 public:
  struct Events {
    /// The user has pressed Print, and the dialog waits for the document.
    std::function<void()> onChosen;
    /// The dialog is closed, and may be destroyed once this returns.
    std::function<void(DialogEnd)> onEnd;
  };

  ApplicationDialog() = default;
  ApplicationDialog(const ApplicationDialog&) = delete;
  ApplicationDialog& operator=(const ApplicationDialog&) = delete;
  virtual ~ApplicationDialog() = default;

  virtual void show() = 0;
  /// The user's choice; may be called only after `onChosen`.
  [[nodiscard]] virtual DialogChoice choice() = 0;
  /// Prints this document as the user chose, or saves it to the chosen file. Asks nothing more unless that
  /// fails.
  virtual void print(FileDescriptor document) = 0;
  /// Shows the dialog again with all its settings, for the user to print this document or to cancel.
  virtual void offer(FileDescriptor document) = 0;
  /// Shows the user why there is no document, then ends.
  virtual void fail(const Failure& failure) = 0;
  /// Called when the program no longer waits. True when the dialog may be destroyed, which causes no event;
  /// false when the user has started to print a document: then the dialog continues until `onEnd`.
  [[nodiscard]] virtual bool leave() = 0;
};

/// Makes a dialog, which is not shown yet: for this document, or for one that does not exist yet (a
/// descriptor that is not open). Failure for a document that cannot be read or is empty.
std::unique_ptr<ApplicationDialog> openDialog(const DialogRequest& request, FileDescriptor document,
                                              const Report& report, ApplicationDialog::Events events);

/// The result of openDialog(), or why it failed.
struct OpenedDialog {
  /// Null where it failed.
  std::unique_ptr<ApplicationDialog> dialog;
  std::optional<Failure> failure;
};

/// openDialog() with C linkage, in the dialog's module. Like ShowDialog, to be called once GTK is started, on
/// the thread of the main loop.
using OpenDialog = void (*)(const DialogRequest& request, FileDescriptor document, const Report& report,
                            ApplicationDialog::Events events, OpenedDialog& opened) noexcept;
inline constexpr const char* kOpenFunction = "tandemTrimOpenDialog";

}  // namespace tandemtrim::host
