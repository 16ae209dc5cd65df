#pragma once

#include <cstdint>
#include <string>

#include <glib.h>

#include "host/dialog/application_dialog.hpp"

/// The arguments of programs' requests as plain values. In the dictionaries only known keys count, with
/// values of their type and within their limits; all else is ignored.
namespace tandemtrim::host {

/// The program that requests a dialog, and the dialog's title.
struct Caller {
  std::string application;
  std::string parent;
  std::string title;
};

/// The request for a dialog with these settings, page setup and options, each of the type a{sv}.
DialogRequest prepareRequest(const Caller& caller, GVariant* settings, GVariant* pageSetup,
                             GVariant* options);

/// The request for a dialog with these options for an existing document.
DialogRequest printRequest(const Caller& caller, GVariant* options);

/// The token among the options; 0 without one.
std::uint32_t tokenIn(GVariant* options);

/// The dictionary a{sv} of these entries, as a floating reference.
GVariant* dictionaryOf(const Entries& entries);

}  // namespace tandemtrim::host
