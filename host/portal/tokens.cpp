#include "host/portal/tokens.hpp"

#include <cerrno>

#include <sys/random.h>

#include "host/failure.hpp"

namespace tandemtrim::host {

std::uint32_t randomBits() {
  std::uint32_t bits = 0;
  ssize_t got = 0;
  do got = getrandom(&bits, sizeof bits, 0);
  while (got < 0 && errno == EINTR);
  if (got != sizeof bits) throw Failure("the system provides no random numbers");
  return bits;
}

std::uint32_t Tokens::issue(const std::string& application, int session) {
  std::uint32_t token = 0;
  while (token == 0 || owners_.contains(token)) token = random_();
  owners_[token] = {application, session};
  return token;
}

std::optional<int> Tokens::take(std::uint32_t token, const std::string& application) {
  const auto owner = owners_.find(token);
  if (owner == owners_.end() || owner->second.application != application) return std::nullopt;
  const int session = owner->second.session;
  owners_.erase(owner);
  return session;
}

void Tokens::forget(int session) {
  std::erase_if(owners_, [&](const auto& entry) { return entry.second.session == session; });
}

}  // namespace tandemtrim::host
