#include "host/cups/connection/connection.hpp"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <thread>
#include <utility>

#include <strings.h>
#include <sys/socket.h>

#include "host/cups/connection/attributes.hpp"
#include "host/cups/connection/certificate.hpp"
#include "host/cups/connection/name_lookup.hpp"
#include "host/cups/connection/refusals.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::seconds kTimeout{10};
constexpr std::chrono::milliseconds kBetweenAttempts{100};
// A server's system acknowledges the last few bytes only after up to 40 ms.
constexpr int kLastBytes = 1024;
constexpr std::chrono::milliseconds kBetweenLooks{1};
// For a request that is sent again, encrypted or with a password. libcups sends each password twice.
constexpr int kAttempts = 10;
constexpr int kNotYet = 0;  // With this time-out libcups makes an object without connecting it.
constexpr const char* kNoServer = "/dev/null";

constexpr auto kBroken = "the print server at [server] broke the connection"_fact;

Failure nobodyAnswers() {
  return Failure(Trouble::noServer,
                 Fact("no print server answers at [server]"_fact, {{"[server]", serverName()}}),
                 "; start CUPS there, or name another server with -h");
}

Failure notEncrypted() {
  return Failure(Trouble::insecure,
                 Fact("the print server at [server] offers no encrypted connection, which is required"_fact,
                      {{"[server]", serverName()}}),
                 "; ask its administrator, or name another server with -h");
}

}  // namespace

std::chrono::seconds timeoutFrom(const char* text) {
  if (text == nullptr) return kTimeout;
  const std::string_view digits = text;
  int seconds = 0;
  // A number that is too large leaves the variable as it is.
  const auto* const end = std::from_chars(digits.data(), digits.data() + digits.size(), seconds).ptr;
  const bool isRead = end == digits.data() + digits.size();
  return isRead && seconds > 0 ? std::chrono::seconds(seconds) : kTimeout;
}

Connection::Connection(const std::optional<std::string>& server)
    : server_(server), bounds_(std::make_unique<Bounds>(timeoutFrom(std::getenv("TANDEM_TRIM_TIMEOUT")))) {
  if (server) cupsSetServer(server->c_str());
  const auto addresses = addressesOf(cupsServer(), ippPort(), bounds_->longest);
  if (addresses) {
    http_.reset(httpConnect2(cupsServer(), ippPort(), addresses.get(), AF_UNSPEC, cupsEncryption(), 1,
                             kNotYet, nullptr));
  }
  if (!http_) throw nobodyAnswers();
  if (!connect()) {
    if (isSilent()) throw lastFailure();
    throw cupsLastError() == IPP_STATUS_ERROR_CUPS_PKI ? notEncrypted() : nobodyAnswers();
  }
}

// Not by cupsDoRequest(), which repeats a redirected request without end.
MessageHandle Connection::ask(MessageHandle request, const std::string& resource) const {
  refuseIncomplete(request);
  const auto watched = watch();
  bool isToBeEncrypted = cupsEncryption() >= HTTP_ENCRYPTION_REQUIRED;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    prepare();
    auto status = cupsSendRequest(get(), request.get(), resource.c_str(), ippLength(request.get()));
    MessageHandle answer;
    if (status == HTTP_STATUS_CONTINUE || status == HTTP_STATUS_OK) {
      answer.reset(cupsGetResponse(get(), resource.c_str()));
      status = httpGetStatus(get());
      if (httpGetState(get()) != HTTP_STATE_WAITING) httpFlush(get());
    }
    checkServer();
    if (answer && !isSilent()) return answer;
    if (isSilent()) break;
    if (status < HTTP_STATUS_MULTIPLE_CHOICES) throw brokenConnection();
    if (status < HTTP_STATUS_BAD_REQUEST) {
      throw Failure(Trouble::noServer,
                    Fact(server() + " sends requests elsewhere (" + httpStatus(status) + ")", kRefusal,
                         {{"[server]", serverName()}, {"[words]", httpStatus(status)}}),
                    "; name the print server itself with -h");
    }
    isToBeEncrypted |= status == HTTP_STATUS_UPGRADE_REQUIRED;
    // After these two statuses, libcups has authenticated the user or encrypted the connection.
    if (status != HTTP_STATUS_UNAUTHORIZED && status != HTTP_STATUS_UPGRADE_REQUIRED) break;
  }
  if (isToBeEncrypted && httpIsEncrypted(get()) == 0 && !isSilent()) throw notEncrypted();
  throw lastFailure();
}

MessageHandle Connection::answerToDocument(const std::string& resource) const {
  drain();
  const auto watched = watch();
  return MessageHandle(cupsGetResponse(get(), resource.c_str()));
}

// Waits until the server has taken all but the last bytes. Gives up when it takes nothing for as long as an
// answer may take.
void Connection::drain() const {
  int left = std::numeric_limits<int>::max();
  for (auto end = std::chrono::steady_clock::now(); !isSilent(); std::this_thread::sleep_for(kBetweenLooks)) {
    const int waiting = bytesOnTheWay(get());
    if (waiting <= kLastBytes) return;
    const auto now = std::chrono::steady_clock::now();
    if (waiting < left) end = now + bounds_->longest;
    left = waiting;
    if (now > end) bounds_->givenUp = GivenUp::tooSlow;
  }
}

DestinationHandle Connection::destination(const char* printer, const char* instance) const {
  prepare();
  // When this server does not answer, libcups would ask its default server, for a minute or more.
  cupsSetServer(kNoServer);
  const auto watched = watch();
  errno = 0;
  DestinationHandle found(cupsGetNamedDest(get(), printer, instance));
  const bool ranOutOfMemory = errno == ENOMEM;
  cupsSetServer(server_ ? server_->c_str() : nullptr);
  // libcups does not report that options are missing.
  if (ranOutOfMemory) throw Failure(std::strerror(ENOMEM));
  checkServer();
  return isSilent() ? nullptr : std::move(found);
}

void Connection::persist(const std::function<void()>& work) const {
  const auto end = std::chrono::steady_clock::now() + bounds_->longest;
  // A connection in the middle of a document takes no other request.
  for (bool isBroken = isSilent() || httpGetState(get()) != HTTP_STATE_WAITING;; isBroken = true) {
    try {
      if (isBroken) reconnect();
      return work();
    } catch (const Failure& failure) {
      const bool isHostile = bounds_->givenUp == GivenUp::tooLarge || failure.trouble() == Trouble::insecure;
      const bool isUseless = isHostile || isTurnedDown();
      if (isUseless || std::chrono::steady_clock::now() >= end) throw;
    }
    std::this_thread::sleep_for(kBetweenAttempts);
  }
}

// Watched, because libcups has no deadline for the start of TLS.
bool Connection::connect() const {
  const auto watched = watch();
  const auto milliseconds = static_cast<int>(std::chrono::milliseconds(bounds_->longest).count());
  if (httpReconnect2(get(), milliseconds, nullptr) != 0) return false;
  checkServer();
  return true;
}

void Connection::prepare() const {
  if (strcasecmp(httpGetField(get(), HTTP_FIELD_CONNECTION), "close") == 0) reconnect();
}

void Connection::checkServer() const {
  if (httpIsEncrypted(get()) == 0) return;
  if (auto warning = checkCertificate(get(), serverName())) warning_ = std::move(warning);
}

void Connection::reconnect() const {
  bounds_->renew();
  httpClearFields(get());
  if (connect()) return;
  throw Failure(Trouble::noServer,
                Fact(server() + " broke the connection and does not accept a new one", kBroken,
                     {{"[server]", serverName()}}),
                "; see whether it is still running");
}

std::string Connection::server() const { return "the print server at " + serverName(); }

std::string serverName() {
  const std::string server = cupsServer();
  return server.starts_with('/') ? server : server + ":" + std::to_string(ippPort());
}

Failure Connection::brokenConnection() const {
  return Failure(Trouble::noServer, Fact(kBroken, {{"[server]", serverName()}}),
                 "; see whether it is still running");
}

Failure Connection::lastFailure() const {
  if (bounds_->givenUp == GivenUp::tooLarge) {
    return Failure(
        Trouble::noServer,
        Fact(server() + " sent an answer that is too large", kUselessAnswer, {{"[server]", serverName()}}),
        "; see whether it is a print server");
  }
  if (isSilent()) {
    return Failure(
        Trouble::noServer,
        Fact("the print server at [server] did not answer within [seconds] s"_fact,
             {{"[server]", serverName()}, {"[seconds]", std::to_string(bounds_->longest.count())}}),
        "; see whether it is still running, or name another server with -h");
  }
  const auto status = httpGetStatus(get());
  // For a connection that ends before an answer, libcups reports an errno, which may be 0.
  const bool isBroken = status < HTTP_STATUS_OK || cupsLastError() < IPP_STATUS_ERROR_BAD_REQUEST;
  return isBroken ? brokenConnection() : refusal(get(), serverName());
}

bool Connection::isTurnedDown() const noexcept {
  const auto status = httpGetStatus(get());
  return status == HTTP_STATUS_CUPS_AUTHORIZATION_CANCELED ||
         (status >= HTTP_STATUS_BAD_REQUEST && status < HTTP_STATUS_SERVER_ERROR);
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
