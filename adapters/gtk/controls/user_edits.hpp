#pragma once

#include <functional>

#include <gtkmm/spinbutton.h>
#include <sigc++/connection.h>
#include <sigc++/trackable.h>

namespace tandemtrim::platform::gtk {

/// Tells what a user does to a spin button's text from what the program does, and reports each edit of the
/// user once, with its final text. The toolkit announces intermediate texts too: a digit typed
/// over a selection comes as a deletion and an insertion. The report therefore waits until the toolkit is
/// done, before the next event, and while an input method composes a text.
class UserEdits : public sigc::trackable {
 public:
  UserEdits(Gtk::SpinButton& entry, std::function<void()> report);
  UserEdits(const UserEdits&) = delete;
  UserEdits& operator=(const UserEdits&) = delete;
  /// An edit that is not reported yet never will be.
  ~UserEdits();

  /// Reports an edit that still waits, now. A text that is being composed is ended for it. An edit whose
  /// report raises waits on.
  void flush();
  /// Replaces the text as the program's own doing. The insertion point keeps its distance to the end, and
  /// what was selected as a whole stays so. False when it was the text already.
  bool setText(const Glib::ustring& text);
  [[nodiscard]] bool isComposing() const { return composing_; }

 private:
  static void onPreeditChanged(GtkText* text, const char* preedit, UserEdits* self);
  void onChanged();
  bool onIdle();
  void schedule();

  Gtk::SpinButton& entry_;
  std::function<void()> report_;
  GtkEditable* text_;
  gulong preeditHandler_;
  sigc::connection idle_;
  bool waiting_ = false;
  bool composing_ = false;
  int programmatic_ = 0;
};

}  // namespace tandemtrim::platform::gtk
