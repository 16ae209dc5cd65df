// The hands of a user at a panel in a window.
#pragma once

#import <AppKit/AppKit.h>

/// Each act gives false when the control is greyed and ignores the user.
namespace user {

/// Replaces the whole text of a box. With TANDEM_TRIM_TYPING=keys in the environment every character that a
/// keyboard has a key for comes by a real press of that key; all others, and without it all, arrive at once
/// as an input method hands them over.
bool replaceText(NSTextField* box, NSString* text);
/// Types at the end of the text, key by key.
bool type(NSTextField* box, NSString* keys);
bool backspace(NSTextField* box);
/// Clicks the middle of a button or a check box with the mouse.
bool click(NSControl* control);
/// Clicks the upper half of a stepper, or the lower half for a negative number, so many times.
bool step(NSStepper* stepper, int steps);
/// Opens the menu with the mouse and lets the button go over the item.
bool choose(NSPopUpButton* menu, NSInteger index);

}  // namespace user
