#pragma once

#include <string>

#include <cups/cups.h>

#include "host/failure.hpp"

namespace tandemtrim::host {

/// Why the server did not do what the last request over this connection asked, in words of our own, with what
/// the user can do about it. `server` is its place. The server's own words are added where it has some.
Failure refusal(http_t* http, const std::string& server);

/// What a server says that refuses a request, with its own words.
inline constexpr auto kRefusal = "the print server at [server] refuses the request ([words])"_fact;

}  // namespace tandemtrim::host
