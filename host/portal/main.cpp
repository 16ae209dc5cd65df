#include <charconv>
#include <chrono>
#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "host/plain_text.hpp"
#include "host/portal/portal_variables.hpp"
#include "host/portal/service.hpp"

namespace {

constexpr std::chrono::seconds kLifeOfToken = std::chrono::hours(1);
constexpr const char* kUsage =
    "tandem-trim-portal: usage: tandem-trim-portal [--ask-again-after SECONDS]; the desktop portal starts "
    "it, "
    "see tandem-trim --applications";
constexpr int kWrongUsage = 2;

std::optional<std::chrono::seconds> lifeOfToken(int count, char** arguments) {
  if (count == 1) return kLifeOfToken;
  if (count != 3 || std::string_view(arguments[1]) != "--ask-again-after") return std::nullopt;
  const std::string_view digits = arguments[2];
  unsigned seconds = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) return std::nullopt;
  return std::chrono::seconds(seconds);
}

}  // namespace

int main(int argc, char** argv) {
  using namespace tandemtrim::host;
  const auto life = lifeOfToken(argc, argv);
  if (!life) {
    std::cerr << kUsage << std::endl;
    return kWrongUsage;
  }
  removePortalVariables();
  // Writing beyond the user's limit on file sizes then fails instead of ending the service.
  std::signal(SIGXFSZ, SIG_IGN);
  const auto report = [](const std::string& message) {
    std::cerr << "tandem-trim-portal: " << plainText(message) << std::endl;
  };
  return Service(report, *life).run();
}
