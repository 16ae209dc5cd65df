#include <algorithm>
#include <cstdlib>

#import "tests/adapters/appkit/support/user.h"

// A user's acts, done as an assistive program does them: without screen, keyboard or mouse.
namespace user {
namespace {

// The editor of a box that has the keyboard, with the insertion point at the end; nil for a greyed box.
NSTextView* editorOf(NSTextField* box) {
  if (![box isEnabled]) return nil;
  if ([box currentEditor] == nil) [[box window] makeFirstResponder:box];
  NSText* editor = [box currentEditor];
  [editor setSelectedRange:NSMakeRange([[editor string] length], 0)];
  return static_cast<NSTextView*>(editor);
}

void sendActionOf(NSControl* control) { [control sendAction:[control action] to:[control target]]; }

}  // namespace

bool replaceText(NSTextField* box, NSString* text) {
  NSTextView* editor = editorOf(box);
  if (editor == nil) return false;
  [editor selectAll:nil];
  if ([text length] == 0) {
    [editor deleteBackward:nil];
  } else {
    [editor insertText:text];
  }
  return true;
}

bool type(NSTextField* box, NSString* keys) {
  NSTextView* editor = editorOf(box);
  if (editor == nil) return false;
  for (NSUInteger index = 0; index < [keys length]; ++index)
    [editor insertText:[keys substringWithRange:NSMakeRange(index, 1)]];
  return true;
}

bool backspace(NSTextField* box) {
  NSTextView* editor = editorOf(box);
  if (editor == nil) return false;
  [editor deleteBackward:nil];
  return true;
}

bool click(NSControl* control) {
  if (![control isEnabled]) return false;
  [control performClick:nil];
  return true;
}

bool step(NSStepper* stepper, int steps) {
  if (![stepper isEnabled]) return false;
  const int direction = steps > 0 ? 1 : -1;
  for (int click = 0; click < std::abs(steps); ++click) {
    const double next = [stepper doubleValue] + direction * [stepper increment];
    [stepper setDoubleValue:std::clamp(next, [stepper minValue], [stepper maxValue])];
    sendActionOf(stepper);
  }
  return true;
}

bool choose(NSPopUpButton* menu, NSInteger index) {
  if (![menu isEnabled]) return false;
  [menu selectItemAtIndex:index];
  sendActionOf(menu);
  return true;
}

}  // namespace user
