#include "host/cli/password.hpp"

#include <cups/cups.h>

#include "host/cups/connection/watch.hpp"

namespace tandemtrim::host {
namespace {

const char* onQuestion(const char* prompt, http_t* http, const char* method, const char* resource,
                       void* /*data*/) {
  const WaitForUser waits;
  // libcups's own question, at the terminal.
  cupsSetPasswordCB2(nullptr, nullptr);
  const char* const password = cupsGetPassword2(prompt, http, method, resource);
  askForPasswords();
  return password;
}

}  // namespace

void askForPasswords() { cupsSetPasswordCB2(onQuestion, nullptr); }

}  // namespace tandemtrim::host
