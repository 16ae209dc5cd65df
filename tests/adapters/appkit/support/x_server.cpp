#include "tests/adapters/appkit/support/x_server.hpp"

#include <memory>
#include <stdexcept>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace x_server {
namespace {

Display* display() {
  struct Close {
    void operator()(Display* display) const { XCloseDisplay(display); }
  };
  static const std::unique_ptr<Display, Close> connection(XOpenDisplay(nullptr));
  if (!connection) throw std::runtime_error("there is no X server");
  return connection.get();
}

// The keysyms of Latin-1 are its characters.
KeySym keysymOf(char32_t character) { return character == kBackspace ? XK_BackSpace : character; }

void moveTo(int x, int y) { XTestFakeMotionEvent(display(), -1, x, y, CurrentTime); }

void send(KeyCode key, bool press) { XTestFakeKeyEvent(display(), key, press ? True : False, CurrentTime); }

}  // namespace

bool hasKey(char32_t character) {
  return character < 0x100 && XKeysymToKeycode(display(), keysymOf(character)) != 0;
}

void pressKey(char32_t character) {
  const auto key = XKeysymToKeycode(display(), keysymOf(character));
  const auto shift = XKeysymToKeycode(display(), XK_Shift_L);
  const bool shifted = XkbKeycodeToKeysym(display(), key, 0, 0) != keysymOf(character);
  if (shifted) send(shift, true);
  send(key, true);
  send(key, false);
  if (shifted) send(shift, false);
  XSync(display(), False);
}

void pressButtonAt(int x, int y) {
  moveTo(x, y);
  XTestFakeButtonEvent(display(), 1, True, CurrentTime);
  XSync(display(), False);
}

void releaseButtonAt(int x, int y) {
  moveTo(x, y);
  XTestFakeButtonEvent(display(), 1, False, CurrentTime);
  XSync(display(), False);
}

}  // namespace x_server
