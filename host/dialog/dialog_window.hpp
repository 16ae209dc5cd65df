#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/printunixdialog.h>
#include <gtkmm/progressbar.h>
#include <gtkmm/window.h>
#include <gtkmm/windowgroup.h>

#include "host/dialog/dialog_state.hpp"
#include "host/dialog/file/file_format.hpp"

namespace tandemtrim::host {

/// The window of GTK's print dialog and its state, with two rows below the tabs: a notice, and a job's
/// progress with a button that cancels the job.
class DialogWindow : public sigc::trackable {
 public:
  /// Offers to print to a file in these formats, if any, and to scale the document if `canScale`.
  DialogWindow(const std::vector<FileFormat>& fileFormats, bool canScale);
  DialogWindow(const DialogWindow&) = delete;
  DialogWindow& operator=(const DialogWindow&) = delete;
  ~DialogWindow();

  [[nodiscard]] Gtk::PrintUnixDialog& dialog() { return dialog_; }
  void show() { dialog_.present(); }
  [[nodiscard]] bool isShown() const { return dialog_.get_visible(); }
  void hide() { dialog_.set_visible(false); }

  [[nodiscard]] DialogState state() const { return state_; }
  /// Enters the state and enables what is possible in it.
  void enter(DialogState state);
  /// Enters the state; a press of Print that waits continues to wait.
  void proceed(DialogState state);
  /// Gives up a press of Print that waits.
  void giveUpPrint();
  /// Shows the text beside a button that runs `tryAgain`.
  void showNotice(const std::string& text, std::function<void()> tryAgain);
  void hideNotice() { notice_.set_visible(false); }
  /// Shows the text with this share of the bar filled; nullopt if it is not known.
  void showProgress(const std::string& text, std::optional<double> share);

 private:
  void addLine(Gtk::Box& line, Gtk::Label& text);
  void makeProgress();
  void setPrintLive(bool isLive) { dialog_.set_response_sensitive(Gtk::ResponseType::OK, isLive); }
  void setContentLive(bool isLive);
  void onPrintLive();

  // Never shown. GTK warns about a dialog without a parent.
  Gtk::Window parent_;
  Gtk::PrintUnixDialog dialog_;
  // A separate group, so that the dialog's questions block no other dialog.
  Glib::RefPtr<Gtk::WindowGroup> group_ = Gtk::WindowGroup::create();
  Gtk::Box& notice_;
  Gtk::Label& noticeText_;
  std::function<void()> tryAgain_;
  Gtk::Box& progress_;
  Gtk::Label& progressText_;
  Gtk::ProgressBar& progressBar_;
  DialogState state_ = DialogState::starting;
  // Where the focus was when the content was disabled.
  GtkWidget* focused_ = nullptr;
};

}  // namespace tandemtrim::host
