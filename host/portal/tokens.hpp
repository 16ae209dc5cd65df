#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// 32 random bits of the system.
std::uint32_t randomBits();

/// The tokens by which programs name what the user has chosen for them. Each is of one program, counts once
/// and cannot be guessed.
class Tokens {
 public:
  explicit Tokens(std::function<std::uint32_t()> random = randomBits) : random_(std::move(random)) {}

  /// A new token, not 0, by which this program, and no other one, names the session.
  std::uint32_t issue(const std::string& application, int session);
  /// The session of the program's token, which is used up then; none for any other token.
  std::optional<int> take(std::uint32_t token, const std::string& application);
  /// The session's token is worth nothing any more.
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
