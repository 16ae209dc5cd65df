#import "tests/adapters/appkit/support/user.h"

#include <cstdlib>
#include <string>

#import "tests/adapters/appkit/support/host.h"
#include "tests/adapters/appkit/support/x_server.hpp"

namespace user {
namespace {

bool hasKeyboard() {
  const char* typing = std::getenv("TANDEM_TRIM_TYPING");
  return typing != nullptr && std::string(typing) == "keys";
}

// Returns the next event of this type without handling it, and handles those before it. If it never arrives,
// the test's timeout ends the wait.
NSEvent* awaited(NSEventType type) {
  for (;;) {
    NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                        untilDate:[NSDate distantFuture]
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    if ([event type] == type) return event;
    [NSApp sendEvent:event];
  }
}

// A user acts in the window that is in front.
void bringToFront(NSWindow* window) {
  if (![window isKeyWindow]) [window makeKeyAndOrderFront:nil];
  host::handleEvents();
}

void pressKey(char32_t key) {
  x_server::pressKey(key);
  [NSApp sendEvent:awaited(NSKeyUp)];
}

// The editor of a box that has the keyboard, with the insertion point at the end; nil for a greyed box.
NSText* editorOf(NSTextField* box) {
  if (![box isEnabled]) return nil;
  bringToFront([box window]);
  if ([box currentEditor] == nil) [[box window] makeFirstResponder:box];
  NSText* editor = [box currentEditor];
  [editor setSelectedRange:NSMakeRange([[editor string] length], 0)];
  return editor;
}

void insert(NSText* editor, NSString* text) { [static_cast<NSTextView*>(editor) insertText:text]; }

// The screen's pixel in the middle of a view's width, at this share of its height from below.
NSPoint pixelOf(NSView* view, CGFloat share) {
  const NSRect bounds = [view bounds];
  const CGFloat height = NSHeight(bounds) * share;
  const NSPoint inView =
      NSMakePoint(NSMidX(bounds), [view isFlipped] ? NSMaxY(bounds) - height : NSMinY(bounds) + height);
  const NSPoint onScreen = [[view window] convertBaseToScreen:[view convertPoint:inView toView:nil]];
  return NSMakePoint(onScreen.x, NSHeight([[[view window] screen] frame]) - onScreen.y);
}

// Presses the mouse button in the middle of a view's width, at this share of its height. Returns the event,
// which is not handled yet: a control waits for the release while it handles the press.
NSEvent* press(NSView* view, CGFloat share) {
  bringToFront([view window]);
  const NSPoint pixel = pixelOf(view, share);
  x_server::pressButtonAt(static_cast<int>(pixel.x), static_cast<int>(pixel.y));
  return awaited(NSLeftMouseDown);
}

// Presses and releases the mouse button in the middle of a view's width, at these shares of its height.
void drag(NSView* view, CGFloat from, CGFloat to) {
  NSEvent* pressed = press(view, from);
  const NSPoint end = pixelOf(view, to);
  x_server::releaseButtonAt(static_cast<int>(end.x), static_cast<int>(end.y));
  [NSApp sendEvent:pressed];
}

}  // namespace

bool replaceText(NSTextField* box, NSString* text) {
  NSText* editor = editorOf(box);
  if (editor == nil) return false;
  [editor selectAll:nil];
  if ([text length] == 0) {
    hasKeyboard() ? pressKey(x_server::kBackspace) : [editor doCommandBySelector:@selector(deleteBackward:)];
    return true;
  }
  if (!hasKeyboard()) {
    insert(editor, text);
    return true;
  }
  for (NSUInteger index = 0; index < [text length];) {
    const NSRange character = [text rangeOfComposedCharacterSequenceAtIndex:index];
    const unichar unit = [text characterAtIndex:index];
    x_server::hasKey(unit) ? pressKey(unit) : insert(editor, [text substringWithRange:character]);
    index = NSMaxRange(character);
  }
  return true;
}

bool type(NSTextField* box, NSString* keys) {
  NSText* editor = editorOf(box);
  if (editor == nil) return false;
  for (NSUInteger index = 0; index < [keys length]; ++index) {
    const unichar key = [keys characterAtIndex:index];
    const bool press = hasKeyboard() && x_server::hasKey(key);
    press ? pressKey(key) : insert(editor, [keys substringWithRange:NSMakeRange(index, 1)]);
  }
  return true;
}

bool backspace(NSTextField* box) {
  NSText* editor = editorOf(box);
  if (editor == nil) return false;
  hasKeyboard() ? pressKey(x_server::kBackspace) : [editor doCommandBySelector:@selector(deleteBackward:)];
  return true;
}

bool click(NSControl* control) {
  const bool live = [control isEnabled];
  drag(control, 0.5, 0.5);
  return live;
}

bool step(NSStepper* stepper, int steps) {
  const bool live = [stepper isEnabled];
  const CGFloat half = steps > 0 ? 0.75 : 0.25;
  for (int click = 0; click < std::abs(steps); ++click) drag(stepper, half, half);
  return live;
}

void hold(NSStepper* stepper) { [NSApp sendEvent:press(stepper, 0.75)]; }

bool choose(NSPopUpButton* menu, NSInteger index) {
  if (![menu isEnabled]) return false;
  // The menu opens with the selected item over the button; all items are as high as the button.
  drag(menu, 0.5, 0.5 - static_cast<CGFloat>(index - [menu indexOfSelectedItem]));
  return true;
}

}  // namespace user
