#pragma once

#include <optional>
#include <string>

#include <cups/cups.h>

namespace tandemtrim::host {

/// `server` is its place. Failure when the server of an encrypted connection shows a certificate that is not
/// to be trusted: another than before or, at the first time, one that client.conf excludes. Keeps the first
/// one as the user's, and gives a warning when that fails.
std::optional<std::string> checkCertificate(http_t* http, const std::string& server);

}  // namespace tandemtrim::host
