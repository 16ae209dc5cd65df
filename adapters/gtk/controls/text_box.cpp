#include "adapters/gtk/controls/text_box.hpp"

#include <memory>

#include <glibmm/main.h>

#include "adapters/gtk/controls/guarded.hpp"
#include "adapters/shared/notification_center.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::gtk {
namespace {

bool hasFocus(Gtk::Widget& widget) {
  return (gtk_widget_get_state_flags(widget.gobj()) & GTK_STATE_FLAG_FOCUS_WITHIN) != 0;
}

}  // namespace

// Properties that the spin button lacks are set in the text inside it.
TextBox::TextBox(Gtk::SpinButton& box)
    : IdentifiedControlOf(box),
      edits_(std::make_unique<UserEdits>(box, [this] { onEdited(); })),
      undoKeys_(gtk_shortcut_controller_new()),
      focus_(gtk_event_controller_focus_new()) {
  IdentifiedControlOf::setStringValue(box.get_text().raw());
  g_object_set(gtk_editable_get_delegate(GTK_EDITABLE(box.gobj())), "input-purpose", GTK_INPUT_PURPOSE_DIGITS,
               "input-hints", GTK_INPUT_HINT_NO_EMOJI, "enable-undo", FALSE, "activates-default", TRUE,
               nullptr);

  gtk_event_controller_set_propagation_phase(undoKeys_, GTK_PHASE_CAPTURE);
  gtk_shortcut_controller_add_shortcut(
      GTK_SHORTCUT_CONTROLLER(undoKeys_),
      gtk_shortcut_new(gtk_keyval_trigger_new(GDK_KEY_z, GDK_CONTROL_MASK),
                       gtk_callback_action_new(&TextBox::onUndo, this, nullptr)));
  g_signal_connect(focus_, "leave", G_CALLBACK(&TextBox::onLeave), this);
  for (auto* controller : {undoKeys_, focus_}) gtk_widget_add_controller(GTK_WIDGET(box.gobj()), controller);
}

TextBox::~TextBox() {
  for (auto* controller : {undoKeys_, focus_})
    gtk_widget_remove_controller(GTK_WIDGET(widget().gobj()), controller);
}

// Removes the focus first: the toolkit removes it from a disabled box without a notification, and then logs a
// warning.
void TextBox::setEnabled(bool enabled) {
  if (!enabled && hasFocus(widget()))
    gtk_root_set_focus(gtk_widget_get_root(GTK_WIDGET(widget().gobj())), nullptr);
  IdentifiedControlOf::setEnabled(enabled);
}

void TextBox::setStringValue(std::string_view text) {
  flush();
  IdentifiedControlOf::setStringValue(text);
  const auto shown = Glib::ustring(std::string(text)).make_valid();
  if (edits_->setText(shown) && hasFocus(widget())) describe(shown);
}

void TextBox::step(std::string_view text) {
  keepForUndo();
  setStringValue(text);
}

void TextBox::onEdited() {
  keepForUndo();
  IdentifiedControlOf::setStringValue(widget().get_text().raw());
  memory::notificationCenter().post(NSControlTextDidChangeNotification, this);
}

// Keeps only a text that the user could have typed; undo does not restore an illegal text that was stored.
void TextBox::keepForUndo() {
  const auto text = stringValue();
  const Object number(integerValue(text));
  const auto* const legal = verifyValue(number);
  if (legal != nullptr && legal->stringValue() == text) earlier_.push_back(text);
}

void TextBox::undo() {
  flush();
  while (!earlier_.empty() && earlier_.back() == stringValue()) earlier_.pop_back();
  if (earlier_.empty()) return;
  const auto text = earlier_.back();
  earlier_.pop_back();
  setStringValue(text);
  memory::notificationCenter().post(NSControlTextDidChangeNotification, this);
}

gboolean TextBox::onUndo(GtkWidget* /*box*/, GVariant* /*arguments*/, gpointer textBox) {
  guarded([&] { static_cast<TextBox*>(textBox)->undo(); });
  return TRUE;
}

// A screen reader speaks the description when it changes; other changes do not reach it at once.
void TextBox::describe(const Glib::ustring& text) {
  auto* const accessible = GTK_ACCESSIBLE(widget().gobj());
  gtk_accessible_reset_relation(accessible, GTK_ACCESSIBLE_RELATION_DESCRIBED_BY);
  gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, (text + " mm").c_str(), -1);
}

void TextBox::setLimitLabel(GtkWidget* label) {
  limitLabel_ = label;
  describeByLimits();
}

void TextBox::describeByLimits() {
  auto* const accessible = GTK_ACCESSIBLE(widget().gobj());
  gtk_accessible_reset_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION);
  gtk_accessible_update_relation(accessible, GTK_ACCESSIBLE_RELATION_DESCRIBED_BY, limitLabel_, nullptr, -1);
}

// Delayed, since a screen reader would still speak a change of the box that the focus is leaving.
void TextBox::onLeave(GtkEventControllerFocus* /*focus*/, TextBox* self) {
  Glib::signal_idle().connect_once(sigc::mem_fun(*self, &TextBox::describeByLimits));
}

}  // namespace tandemtrim::platform::gtk
