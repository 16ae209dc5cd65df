#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/cups/connection/watch.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {

/// The address of this thread's server, for messages: a socket's path, or host and port.
std::string serverName();

/// How long an answer may take, from the text of the environment variable TANDEM_TRIM_TIMEOUT: its number of
/// seconds, or 10 where it is no positive whole number or missing (null).
std::chrono::seconds timeoutFrom(const char* text);

/// The fact about an answer that no print server would send.
inline constexpr auto kUselessAnswer = "the print server at [server] sent an answer that cannot be used"_fact;

/// A connection to a print server on which no request waits forever.
class Connection {
 public:
  /// Connects to `server` ("host", "host:port" or a socket's path), or to libcups's default server. Failure
  /// when it does not answer within timeoutFrom() of the environment variable.
  explicit Connection(const std::optional<std::string>& server);

  [[nodiscard]] http_t* get() const noexcept { return http_.get(); }

  /// Sends a request and returns the answer, which may report an error. Failure when there is no answer, or a
  /// redirection.
  [[nodiscard]] MessageHandle ask(MessageHandle request, const std::string& resource) const;

  /// Returns the answer to a document whose last byte is written; null when there is none. The time-out
  /// begins only once the server has taken nearly all bytes, or takes no more.
  [[nodiscard]] MessageHandle answerToDocument(const std::string& resource) const;

  /// Returns the server's record of a printer (null: the default one), with the options that the user saved
  /// for it or its instance; null when there is none, or no answer. libcups asks no other server.
  [[nodiscard]] DestinationHandle destination(const char* printer, const char* instance) const;

  /// While the result exists, libcups's requests are cut off when they take longer than one answer may, or
  /// their answer is too large; isSilent() then returns true.
  [[nodiscard]] Watch watch(Patience patience = Patience::none) const {
    return Watch(get(), *bounds_, patience);
  }

  /// Whether a request was given up: its answer did not come in time, or was too large. libcups does not
  /// report that for every call.
  [[nodiscard]] bool isSilent() const noexcept { return bounds_->givenUp != GivenUp::no; }

  /// Replaces the connection if the next request would make libcups do so, without checkServer().
  void prepare() const;

  /// Replaces the connection by a new one to the same server. Failure when the server accepts none.
  void reconnect() const;

  /// Runs `work`, which asks the server. After a Failure, runs it again over a new connection, for as long as
  /// one answer may take; then throws the last Failure. Throws at once where repeating is useless.
  void persist(const std::function<void()>& work) const;

  /// Failure as for checkCertificate() when the connection is encrypted. libcups reconnects without this
  /// check, so prepare() comes before each of its requests, and no answer may be believed before this call.
  void checkServer() const;

  /// A warning about the server for the user, if there is one.
  [[nodiscard]] const std::optional<std::string>& warning() const noexcept { return warning_; }

  /// "the print server at localhost:631".
  [[nodiscard]] std::string server() const;

  /// Whether the server rejected the last request by its HTTP status. Asking again is useless.
  [[nodiscard]] bool isTurnedDown() const noexcept;

  /// Why the last call of libcups failed: no answer, a broken connection, or the server's refusal.
  [[nodiscard]] Failure lastFailure() const;

 private:
  [[nodiscard]] bool connect() const;
  void drain() const;
  [[nodiscard]] Failure brokenConnection() const;

  HttpHandle http_;
  std::optional<std::string> server_;
  mutable std::optional<std::string> warning_;
  // On the heap, so that its address stays the same when the connection is moved.
  std::unique_ptr<Bounds> bounds_;
};

/// A new request about a printer.
MessageHandle printerRequest(ipp_op_t operation, const std::string& printer);
/// The resource that requests about a printer go to.
std::string printerResource(const std::string& printer);

}  // namespace tandemtrim::host
