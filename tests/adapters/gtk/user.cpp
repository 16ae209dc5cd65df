#include "tests/adapters/gtk/user.hpp"

#include <stdexcept>
#include <vector>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <gdk/x11/gdkx.h>

namespace tandemtrim::test {
namespace {

// A key that no widget handles. Once the window has received it, it has received all earlier input.
constexpr unsigned kAnswerKey = XK_Pause;
constexpr unsigned kMillisecondsBetweenChecks = 10;
constexpr int kMostChecks = 2000;

// Runs what is ready now: idles that an event has added, answers of the clipboard.
void runWhatIsReady() {
  for (int round = 0; round < 50 && g_main_context_pending(nullptr) != FALSE; ++round)
    g_main_context_iteration(nullptr, FALSE);
}

// Watches every surface, as an open list has a separate one.
gboolean noteAnswer(GSignalInvocationHint* /*hint*/, guint /*count*/, const GValue* values,
                    gpointer answered) {
  auto* const event = static_cast<GdkEvent*>(g_value_peek_pointer(values + 1));
  if (gdk_event_get_event_type(event) == GDK_KEY_PRESS && gdk_key_event_get_keyval(event) == kAnswerKey)
    *static_cast<bool*>(answered) = true;
  return TRUE;
}

guint eventSignal() { return g_signal_lookup("event", GDK_TYPE_SURFACE); }

}  // namespace

// Not every wait ends with an event, so the loop checks again every few milliseconds.
void waitUntil(const char* what, const std::function<bool()>& isDone) {
  int checks = 0;
  const auto timer = g_timeout_add(
      kMillisecondsBetweenChecks,
      [](gpointer count) -> gboolean {
        ++*static_cast<int*>(count);
        return G_SOURCE_CONTINUE;
      },
      &checks);
  while (!isDone() && checks < kMostChecks) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(timer);
  if (checks >= kMostChecks) throw std::runtime_error(std::string("timed out waiting for ") + what);
}

struct User::X {
  Display* display = XOpenDisplay(nullptr);
  Window window = 0;
};

User::User(GtkWindow* window) : window_(window), x_(std::make_unique<X>()) {
  gtk_window_present(window);
  answers_ = g_signal_add_emission_hook(eventSignal(), 0, noteAnswer, &answered_, nullptr);
  waitUntil("the window", [&] { return gtk_widget_get_mapped(GTK_WIDGET(window)) != FALSE; });
  x_->window = gdk_x11_surface_get_xid(gtk_native_get_surface(GTK_NATIVE(window)));
  turnTo();
}

User::~User() {
  g_signal_remove_emission_hook(eventSignal(), answers_);
  gtk_window_destroy(window_);
  runWhatIsReady();
  XCloseDisplay(x_->display);
}

// Without a window manager, nothing else raises the window and gives it the keyboard.
void User::turnTo() {
  waitUntil("the keyboard", [&] {
    if (gtk_window_is_active(window_) != FALSE) return true;
    XWindowAttributes attributes{};
    XGetWindowAttributes(x_->display, x_->window, &attributes);
    XRaiseWindow(x_->display, x_->window);
    if (attributes.map_state == IsViewable)
      XSetInputFocus(x_->display, x_->window, RevertToParent, CurrentTime);
    XSync(x_->display, False);
    return false;
  });
}

void User::focus(GtkWidget* widget) {
  turnTo();
  gtk_widget_grab_focus(widget);
  runWhatIsReady();
}

void User::send(unsigned keysym, unsigned modifier) {
  auto* const display = x_->display;
  const auto code = XKeysymToKeycode(display, keysym);
  std::vector<KeyCode> modifierCodes;
  if (modifier != 0) modifierCodes.push_back(XKeysymToKeycode(display, modifier));
  if (XkbKeycodeToKeysym(display, code, 0, 0) != keysym)
    modifierCodes.push_back(XKeysymToKeycode(display, XK_Shift_L));
  for (const auto modifierCode : modifierCodes) XTestFakeKeyEvent(display, modifierCode, True, 0);
  XTestFakeKeyEvent(display, code, True, 0);
  XTestFakeKeyEvent(display, code, False, 0);
  for (const auto modifierCode : modifierCodes) XTestFakeKeyEvent(display, modifierCode, False, 0);
}

void User::settle() {
  answered_ = false;
  send(kAnswerKey, 0);
  XFlush(x_->display);
  waitUntil("an answer of the window", [&] { return answered_; });
  runWhatIsReady();
}

void User::press(unsigned keysym, unsigned modifier) {
  send(keysym, modifier);
  settle();
}

void User::type(const std::string& text) {
  for (const char character : text) {
    if (static_cast<unsigned char>(character) < 0x80U) press(static_cast<unsigned char>(character));
  }
}

void User::paste(const std::string& text) {
  gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(window_)), text.c_str());
  press(XK_v, XK_Control_L);
}

// Widgets get their places when a frame is painted.
void User::awaitFrame() {
  auto* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(window_));
  bool painted = false;
  const auto handler = g_signal_connect(
      clock, "after-paint",
      G_CALLBACK(+[](GdkFrameClock*, gpointer flag) { *static_cast<bool*>(flag) = true; }), &painted);
  gdk_frame_clock_request_phase(clock, GDK_FRAME_CLOCK_PHASE_AFTER_PAINT);
  waitUntil("a frame", [&] { return painted; });
  g_signal_handler_disconnect(clock, handler);
}

void User::pointAt(GtkWidget* widget, double across) {
  turnTo();
  awaitFrame();
  // An open list has a separate surface.
  auto* const native = gtk_widget_get_native(widget);
  graphene_rect_t bounds{};
  if (!gtk_widget_compute_bounds(widget, GTK_WIDGET(native), &bounds))
    throw std::runtime_error("a widget without a place");
  double left = 0;
  double top = 0;
  gtk_native_get_surface_transform(native, &left, &top);
  int x = 0;
  int y = 0;
  Window child = 0;
  XTranslateCoordinates(x_->display, gdk_x11_surface_get_xid(gtk_native_get_surface(native)),
                        DefaultRootWindow(x_->display),
                        static_cast<int>(left + bounds.origin.x + bounds.size.width * across),
                        static_cast<int>(top + bounds.origin.y + bounds.size.height / 2), &x, &y, &child);
  XTestFakeMotionEvent(x_->display, -1, x, y, 0);
}

void User::click(GtkWidget* widget) {
  pointAt(widget);
  XTestFakeButtonEvent(x_->display, 1, True, 0);
  XTestFakeButtonEvent(x_->display, 1, False, 0);
  settle();
}

void User::hold(GtkWidget* widget, const std::function<bool()>& isDone) {
  pointAt(widget);
  XTestFakeButtonEvent(x_->display, 1, True, 0);
  XFlush(x_->display);
  waitUntil("the end of a hold", isDone);
  XTestFakeButtonEvent(x_->display, 1, False, 0);
  settle();
}

void User::turnWheel(GtkWidget* widget, bool up) {
  pointAt(widget);
  const unsigned button = up ? 4 : 5;
  XTestFakeButtonEvent(x_->display, button, True, 0);
  XTestFakeButtonEvent(x_->display, button, False, 0);
  settle();
}

// The window answers no key during a drag, which takes the keyboard.
void User::drag(GtkWidget* from, GtkWidget* to) {
  constexpr double kInTheText = 0.66;
  constexpr int kSteps = 20;
  pointAt(from, kInTheText);
  XTestFakeButtonEvent(x_->display, 1, True, 0);
  settle();
  for (int step = 0; step < kSteps; ++step) {
    XTestFakeRelativeMotionEvent(x_->display, 1, 1, 0);
    XSync(x_->display, False);
    awaitFrame();
  }
  for (int step = 0; step < 2; ++step) {
    pointAt(to, step == 0 ? 0.5 : kInTheText);
    XSync(x_->display, False);
    awaitFrame();
  }
  XTestFakeButtonEvent(x_->display, 1, False, 0);
  XSync(x_->display, False);
}

}  // namespace tandemtrim::test
