#include <csignal>
#include <iostream>
#include <string>

#include "host/plain_text.hpp"
#include "host/portal/portal_variables.hpp"
#include "host/portal/service.hpp"

int main() {
  using namespace tandemtrim::host;
  removePortalVariables();
  // A document that is too large for the user's limit is a message then, not the service's end.
  std::signal(SIGXFSZ, SIG_IGN);
  const auto report = [](const std::string& message) {
    std::cerr << "tandem-trim-portal: " << plainText(message) << std::endl;
  };
  return Service(report).run();
}
