#pragma once

#include <string>
#include <vector>

#include "host/panel_session.hpp"

/// The texts that the dialog's host shows itself; the panel brings its own.
namespace tandemtrim::host {

enum class Text {
  correct,
  sendAsItIs,
  back,
  close,
  help,
  helpText,
  useForAllJobs,
  summary,
  reading,
  unavailable,
  choosePrinter,
  sending,
};

/// With the underscore of a mnemonic where it titles a control.
const char* text(Text which);

/// A line for each value: what it is, what the printer allows.
std::string text(const std::vector<IllegalValue>& values);

}  // namespace tandemtrim::host
