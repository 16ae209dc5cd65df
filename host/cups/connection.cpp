#include "host/cups/connection.hpp"

#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <thread>

#include <sys/socket.h>

namespace tandemtrim::host {
namespace {

constexpr std::chrono::seconds kTimeout{10};
constexpr std::chrono::milliseconds kBetweenAttempts{100};
constexpr const char* kNoServer = "/dev/null";

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

Trouble troubleOf(ipp_status_t status) {
  switch (status) {
    case IPP_STATUS_ERROR_SERVICE_UNAVAILABLE:
      return Trouble::noServer;
    case IPP_STATUS_ERROR_NOT_FOUND:
      return Trouble::noPrinter;
    case IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS:
      return Trouble::rejecting;
    case IPP_STATUS_ERROR_DOCUMENT_FORMAT_NOT_SUPPORTED:
      return Trouble::format;
    default:
      return Trouble::other;
  }
}

int onTimeout(http_t* /*http*/, void* silent) {
  *static_cast<bool*>(silent) = true;
  return 0;  // Wait no longer.
}

}  // namespace

Connection::Connection(const std::optional<std::string>& server)
    : server_(server), timeout_(timeoutFromEnvironment()) {
  if (server) cupsSetServer(server->c_str());
  const auto milliseconds = static_cast<int>(std::chrono::milliseconds(timeout_).count());
  http_.reset(
      httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, milliseconds, nullptr));
  if (!http_) {
    throw Failure(Trouble::noServer, "no print server answers at " + serverName(),
                  "; start CUPS there, or name another server by -h");
  }
  httpSetTimeout(http_.get(), static_cast<double>(timeout_.count()), onTimeout, silent_.get());
}

MessageHandle Connection::ask(MessageHandle request, const std::string& resource) const {
  MessageHandle answer(cupsDoRequest(get(), request.release(), resource.c_str()));
  if (!answer) throw lastFailure();
  return answer;
}

DestinationHandle Connection::destination(const char* printer, const char* instance) const {
  // libcups asks its own default server whatever this one does not answer, for a minute or more.
  cupsSetServer(kNoServer);
  DestinationHandle found(cupsGetNamedDest(get(), printer, instance));
  cupsSetServer(server_ ? server_->c_str() : nullptr);
  return isSilent() ? nullptr : std::move(found);
}

void Connection::persist(const std::function<void()>& work) const {
  const auto end = std::chrono::steady_clock::now() + timeout_;
  // A connection in the middle of a document takes no other request.
  for (bool isBroken = isSilent() || httpGetState(get()) != HTTP_STATE_WAITING;; isBroken = true) {
    try {
      if (isBroken) reconnect();
      return work();
    } catch (const Failure&) {
      if (std::chrono::steady_clock::now() >= end) throw;
    }
    std::this_thread::sleep_for(kBetweenAttempts);
  }
}

void Connection::reconnect() const {
  *silent_ = false;
  const auto milliseconds = static_cast<int>(std::chrono::milliseconds(timeout_).count());
  if (httpReconnect2(get(), milliseconds, nullptr) == 0) return;
  throw Failure(Trouble::noServer, server() + " broke the connection and takes no new one",
                "; see whether it is still running");
}

std::string Connection::server() const { return "the print server at " + serverName(); }

Failure Connection::lastFailure() const {
  if (isSilent()) {
    return Failure(Trouble::noServer,
                   server() + " did not answer within " + std::to_string(timeout_.count()) + " s",
                   "; see whether it is still running, or name another server by -h");
  }
  // libcups knows no word for a connection that ends in front of an answer.
  if (cupsLastError() < IPP_STATUS_ERROR_BAD_REQUEST)
    return Failure(Trouble::noServer, server() + " broke the connection");
  return Failure(troubleOf(cupsLastError()), server() + " failed: " + cupsLastErrorString());
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
