#pragma once

#include <cstdint>
#include <string>

#include <glib.h>

#include "host/dialog/application_dialog.hpp"

/// What programs hand over with a request, as plain values. Of the dictionaries only known keys count, with
/// values of their type and within their limits; all else is left out, whatever it is.
namespace tandemtrim::host {

/// Who asks for a dialog, and how it is called.
struct Caller {
  std::string application;
  std::string parent;
  std::string title;
};

/// The request for a dialog with these settings, page setup and options, each of the type a{sv}.
DialogRequest prepareRequest(const Caller& caller, GVariant* settings, GVariant* pageSetup,
                             GVariant* options);

/// The request for a dialog with these options for a document that is there.
DialogRequest printRequest(const Caller& caller, GVariant* options);

/// The token among the options; 0 for none.
std::uint32_t tokenIn(GVariant* options);

/// The dictionary a{sv} of these entries; floating.
GVariant* dictionaryOf(const Entries& entries);

}  // namespace tandemtrim::host
