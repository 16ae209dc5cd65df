#include "adapters/gtk/controls/user_edits.hpp"

#include <algorithm>
#include <utility>

#include <glibmm/main.h>

#include "adapters/gtk/controls/guarded.hpp"

namespace tandemtrim::platform::gtk {
namespace {

// The toolkit ends a composition when the text becomes read-only, and has no other way to do so.
void endComposition(GtkEditable* text) {
  gtk_editable_set_editable(text, FALSE);
  gtk_editable_set_editable(text, TRUE);
}

}  // namespace

// Input methods compose into the text inside the spin button. The reference keeps it alive until its handler
// is disconnected.
UserEdits::UserEdits(Gtk::SpinButton& entry, std::function<void()> report)
    : entry_(entry),
      report_(std::move(report)),
      text_(GTK_EDITABLE(g_object_ref(gtk_editable_get_delegate(GTK_EDITABLE(entry.gobj()))))),
      preeditHandler_(
          g_signal_connect(text_, "preedit-changed", G_CALLBACK(&UserEdits::onPreeditChanged), this)) {
  entry.signal_changed().connect(sigc::mem_fun(*this, &UserEdits::onChanged));
}

UserEdits::~UserEdits() {
  idle_.disconnect();
  g_signal_handler_disconnect(text_, preeditHandler_);
  g_object_unref(text_);
}

void UserEdits::onChanged() {
  if (programmatic_ > 0) return;
  waiting_ = true;
  schedule();
}

void UserEdits::onPreeditChanged(GtkText* /*text*/, const char* preedit, UserEdits* self) {
  self->composing_ = preedit != nullptr && *preedit != '\0';
  if (!self->composing_ && self->waiting_) self->schedule();
}

void UserEdits::schedule() {
  if (composing_ || idle_.connected()) return;
  idle_ = Glib::signal_idle().connect(sigc::mem_fun(*this, &UserEdits::onIdle), Glib::PRIORITY_HIGH);
}

bool UserEdits::onIdle() {
  idle_ = {};
  if (!composing_) guarded([this] { flush(); });
  return false;
}

void UserEdits::flush() {
  if (composing_) endComposition(text_);
  idle_.disconnect();
  if (!std::exchange(waiting_, false)) return;
  try {
    report_();
  } catch (...) {
    waiting_ = true;
    throw;
  }
}

bool UserEdits::setText(const Glib::ustring& text) {
  // Compares bytes, since the toolkit's own comparison takes digits of other scripts for those of ASCII.
  if (entry_.get_text().raw() == text.raw()) return false;
  const auto length = static_cast<int>(entry_.get_text().length());
  const int fromEnd = length - entry_.get_position();
  int start = 0;
  int end = 0;
  const bool allSelected = entry_.get_selection_bounds(start, end) && end - start == length;

  ++programmatic_;
  // Setting the property notifies screen readers of a single change; other ways to replace the text do not.
  g_object_set(text_, "text", text.c_str(), nullptr);
  --programmatic_;
  if (allSelected) {
    entry_.select_region(0, -1);
  } else {
    entry_.set_position(std::max(0, static_cast<int>(text.length()) - fromEnd));
  }
  return true;
}

}  // namespace tandemtrim::platform::gtk
