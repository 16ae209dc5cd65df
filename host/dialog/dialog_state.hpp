#pragma once

namespace tandemtrim::host {

/// What the dialog is doing. In the states that end in "ToPrint" Print has been pressed, and the job is sent
/// as soon as the dialog is ready.
enum class DialogState {
  /// The details of the first printer are being read: the one that the command line names, or the default.
  starting,
  startingToPrint,
  /// The dialog selects the first printer in GTK's list.
  selecting,
  selectingToPrint,
  /// The details of the printer that the user chose are being read.
  reading,
  readingToPrint,
  ready,
  /// The user has chosen how to print; the dialog waits, hidden, for the document.
  chosen,
  /// The job is being sent.
  sending,
  /// The user cancelled while the job was being sent; the dialog waits, hidden, for the server.
  cancelling
};

/// What is possible in a state.
struct Live {
  /// Whether Print can be pressed, unless GTK forbids it for the printer.
  bool print;
  /// Whether the dialog's controls are enabled.
  bool content;
  /// Whether the dialog follows the printer that is selected in GTK's list.
  bool followsPrinter;
  /// Whether the job is sent as soon as the dialog is ready.
  bool printWaits;

  friend bool operator==(const Live&, const Live&) = default;
};

Live liveIn(DialogState state);

/// The state once Print is pressed; the same where Print does not wait.
DialogState withPrint(DialogState state);

/// The state once a press of Print is given up.
DialogState withoutPrint(DialogState state);

}  // namespace tandemtrim::host
