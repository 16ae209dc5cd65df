#pragma once

#include <string>

#include <cups/cups.h>

namespace tandemtrim::host {

/// Failure when the server of an encrypted connection shows a certificate that is not to be trusted: another
/// than before, unless it is the same server's next one, or, at the first time, one that client.conf
/// excludes. Keeps the certificate as the user's.
void checkCertificate(http_t* http, const std::string& server);

}  // namespace tandemtrim::host
