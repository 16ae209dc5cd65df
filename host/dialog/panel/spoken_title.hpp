#pragma once

#include <string>

#include <gtkmm/widget.h>

namespace tandemtrim::host {

/// Has a screen reader speak this title of a button without the mark of its access key, which the toolkit
/// leaves in, and without the letter that may follow it in parentheses.
void speakTitle(Gtk::Widget& button, std::string title);

}  // namespace tandemtrim::host
