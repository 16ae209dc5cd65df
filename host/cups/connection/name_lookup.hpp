#pragma once

#include <chrono>
#include <string>

#include "host/cups/connection/cups_handles.hpp"

namespace tandemtrim::host {

/// The addresses of a server, or of a socket's path; null when the name is not resolved within the time.
AddressesHandle addressesOf(const std::string& host, int port, std::chrono::seconds longest);

}  // namespace tandemtrim::host
