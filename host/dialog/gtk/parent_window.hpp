#pragma once

#include <string>

#include <gtkmm/window.h>

namespace tandemtrim::host {

/// Makes the window a dialog of another program's window, which that program names as "x11:" with the
/// window's number in hexadecimal digits or as "wayland:" with a handle that the compositor gave it. A name
/// of another form, or for another display server than the window's, changes nothing.
void setParentOfOtherProgram(Gtk::Window& window, const std::string& parent);

}  // namespace tandemtrim::host
