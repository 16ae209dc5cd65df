#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <cups/cups.h>

namespace tandemtrim::host {

/// The file in this folder in which libcups stores the certificate of the print server with this name.
std::filesystem::path certificateFile(const std::filesystem::path& folder, std::string host);

/// Checks the certificate of an encrypted connection's server. Failure when it differs from the stored one
/// or, the first time, is not trusted according to client.conf. Stores the first one for the user; returns a
/// warning when that fails. Messages call the server `server`.
std::optional<std::string> checkCertificate(http_t* http, const std::string& server);

}  // namespace tandemtrim::host
