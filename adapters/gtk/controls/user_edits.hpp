#pragma once

#include <functional>

#include <gtkmm/spinbutton.h>
#include <sigc++/connection.h>
#include <sigc++/trackable.h>

namespace tandemtrim::platform::gtk {

/// Distinguishes the user's edits of a spin button's text from the program's, and reports each edit of the
/// user once, with its final text. The toolkit also signals intermediate texts: a digit typed over a
/// selection is a deletion and an insertion. The report is therefore delayed until the toolkit is done,
/// before the next event, and until an input method has composed its text.
class UserEdits : public sigc::trackable {
 public:
  UserEdits(Gtk::SpinButton& entry, std::function<void()> report);
  UserEdits(const UserEdits&) = delete;
  UserEdits& operator=(const UserEdits&) = delete;
  /// Drops an edit that is not reported yet.
  ~UserEdits();

  /// Reports a pending edit now, after ending a composition. If the report raises, the edit stays pending.
  void flush();
  /// Replaces the text, without reporting an edit. The insertion point keeps its distance to the end; a text
  /// that is wholly selected stays so. False if this was the text already.
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
