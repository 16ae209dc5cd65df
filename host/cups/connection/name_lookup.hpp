#pragma once

#include <chrono>
#include <string>

#include "host/cups/connection/cups_handles.hpp"

namespace tandemtrim::host {

/// The addresses of a server, or the one of a socket's path; null when its name is not known within the time.
AddressesHandle addressesOf(const std::string& host, int port, std::chrono::seconds longest);

}  // namespace tandemtrim::host
