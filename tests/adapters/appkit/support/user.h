// A user of a panel in a window.
#pragma once

#import <AppKit/AppKit.h>

/// Each act returns false when the control is greyed and ignores the user.
namespace user {

/// Replaces the whole text of a box. With TANDEM_TRIM_TYPING=keys in the environment, each character that has
/// a key is typed by a real press of that key. Other characters, and all without that variable, arrive at
/// once, as from an input method.
bool replaceText(NSTextField* box, NSString* text);
/// Types at the end of the text, key by key.
bool type(NSTextField* box, NSString* keys);
bool backspace(NSTextField* box);
/// Clicks the middle of a button or a check box with the mouse.
bool click(NSControl* control);
/// Clicks the upper half of a stepper `steps` times, or the lower half for a negative number.
bool step(NSStepper* stepper, int steps);
/// Presses the mouse button over the upper half of a stepper; returns when the button is released.
void hold(NSStepper* stepper);
/// Opens the menu with the mouse and releases the button over the item.
bool choose(NSPopUpButton* menu, NSInteger index);

}  // namespace user
