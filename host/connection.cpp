#include "host/connection.hpp"

#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include <sys/socket.h>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::seconds kTimeout{10};

std::chrono::seconds timeoutFromEnvironment() {
  const char* text = std::getenv("TANDEM_TRIM_TIMEOUT");
  if (text == nullptr) return kTimeout;
  const std::string_view digits = text;
  int seconds = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
  return isNumber && seconds > 0 ? std::chrono::seconds(seconds) : kTimeout;
}

// Where the server is, for messages: a socket's path, or host and port.
std::string serverName() {
  const std::string server = cupsServer();
  return server.starts_with('/') ? server : server + ":" + std::to_string(ippPort());
}

int onTimeout(http_t* /*http*/, void* silent) {
  *static_cast<bool*>(silent) = true;
  return 0;  // Wait no longer.
}

}  // namespace

Connection::Connection(const std::optional<std::string>& server) : timeout_(timeoutFromEnvironment()) {
  if (server) cupsSetServer(server->c_str());
  const auto milliseconds = static_cast<int>(std::chrono::milliseconds(timeout_).count());
  http_.reset(
      httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, milliseconds, nullptr));
  if (!http_) {
    throw Failure("no print server answers at " + serverName() +
                  "; start CUPS there, or name another server by -h");
  }
  httpSetTimeout(http_.get(), static_cast<double>(timeout_.count()), onTimeout, silent_.get());
}

MessageHandle Connection::ask(MessageHandle request, const std::string& resource) const {
  MessageHandle answer(cupsDoRequest(get(), request.release(), resource.c_str()));
  if (!answer) throw Failure(lastError());
  return answer;
}

std::string Connection::lastError() const {
  if (isSilent()) {
    return "the print server at " + serverName() + " did not answer within " +
           std::to_string(timeout_.count()) +
           " s; see whether it is still running, or name another server by -h";
  }
  return "the print server at " + serverName() + " failed: " + cupsLastErrorString();
}

MessageHandle printerRequest(ipp_op_t operation, const std::string& printer) {
  std::array<char, HTTP_MAX_URI> uri{};
  httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr, "localhost",
                   ippPort(), "/printers/%s", printer.c_str());
  MessageHandle request(ippNewRequest(operation));
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.data());
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
  return request;
}

std::string printerResource(const std::string& printer) { return "/printers/" + printer; }

}  // namespace tandemtrim::host
