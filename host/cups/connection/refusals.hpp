#pragma once

#include <string>

#include <cups/cups.h>

#include "host/failure.hpp"

namespace tandemtrim::host {

/// Why the server refused the last request over this connection, with the server's own message, if any, and a
/// remedy. Messages call the server `server`.
Failure refusal(http_t* http, const std::string& server);

/// The fact about any refusal without a more specific text, with the server's words.
inline constexpr auto kRefusal = "the print server at [server] refuses the request ([words])"_fact;

}  // namespace tandemtrim::host
