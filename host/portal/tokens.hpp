#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// 32 random bits from the system.
std::uint32_t randomBits();

/// The tokens by which programs refer to the user's choice. Each cannot be guessed and is valid once, only
/// for programs with the same identifier, which is empty for many programs outside a sandbox.
class Tokens {
 public:
  explicit Tokens(std::function<std::uint32_t()> random = randomBits) : random_(std::move(random)) {}

  /// A new token, not 0, by which only programs with this identifier refer to the session.
  std::uint32_t issue(const std::string& application, int session);
  /// The session of this identifier's token, which becomes invalid; nullopt for any other token.
  std::optional<int> take(std::uint32_t token, const std::string& application);
  /// Makes the session's token invalid.
  void forget(int session);

 private:
  struct Owner {
    std::string application;
    int session;
  };

  std::function<std::uint32_t()> random_;
  std::map<std::uint32_t, Owner> owners_;
};

}  // namespace tandemtrim::host
