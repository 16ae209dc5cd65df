#include "host/cups/connection/login.hpp"

#include <array>
#include <utility>

#include <cups/cups.h>

#include "host/cups/connection/watch.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kTries = 3;

// One for each thread, like libcups's own state.
struct Logins {
  AskForLogin ask;
  int asked = 0;
  bool isGiven = false;
  std::string password;
};

thread_local Logins logins;

const char* onQuestion(const char* prompt, http_t* http, const char* /*method*/, const char* /*resource*/,
                       void* /*data*/) {
  if (logins.asked == kTries) return nullptr;
  std::array<char, HTTP_MAX_HOST> server{};
  httpGetHostname(http, server.data(), static_cast<int>(server.size()));
  const WaitForUser waits;
  auto login = logins.ask({prompt, server.data(), logins.asked++ > 0});
  logins.isGiven = login.has_value();
  if (!login) {
    logins.asked = kTries;
    return nullptr;
  }
  cupsSetUser(login->user.c_str());
  logins.password = std::move(login->password);
  return logins.password.c_str();
}

}  // namespace

void answerLogins(AskForLogin ask) {
  logins = {std::move(ask), 0, false, {}};
  cupsSetPasswordCB2(onQuestion, nullptr);
}

bool isLoginGiven() noexcept { return logins.isGiven; }

}  // namespace tandemtrim::host
