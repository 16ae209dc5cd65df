#pragma once

/// Real input of a keyboard and a mouse, sent by the X server's XTEST extension.
namespace x_server {

/// Whether a keyboard has a key for the character.
bool hasKey(char32_t character);
/// Presses and releases the character's key, with Shift if the character needs it.
void pressKey(char32_t character);
inline constexpr char32_t kBackspace = 0x08;
/// The left mouse button, at pixels from the screen's upper left corner.
void pressButtonAt(int x, int y);
void releaseButtonAt(int x, int y);

}  // namespace x_server
