#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/cups/connection/watch.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {

/// Where the thread's server is, for messages: a socket's path, or host and port.
std::string serverName();

/// What a server says that answers otherwise than a print server does.
inline constexpr auto kUselessAnswer = "the print server at [server] gave an answer that cannot be used"_fact;

/// A connection to a print server on which no request waits for ever.
class Connection {
 public:
  /// Connects to the server that `server` names ("host" or "host:port"), else to the one that libcups would
  /// choose. Failure when none answers within the time that the environment variable TANDEM_TRIM_TIMEOUT
  /// gives in seconds, 10 without it.
  explicit Connection(const std::optional<std::string>& server);

  [[nodiscard]] http_t* get() const noexcept { return http_.get(); }

  /// Sends a request and gives the answer; Failure when there is none, or it leads elsewhere. The answer may
  /// tell of an error of the server's.
  [[nodiscard]] MessageHandle ask(MessageHandle request, const std::string& resource) const;

  /// The answer to a document whose last byte is written; null when there is none. A slow way to the server
  /// takes the time that it takes.
  [[nodiscard]] MessageHandle answerToDocument(const std::string& resource) const;

  /// The server's record of a printer (null: of the default one), with what the user saved for it or for an
  /// instance of it; null when the server does not give one. libcups asks nobody else.
  [[nodiscard]] DestinationHandle destination(const char* printer, const char* instance) const;

  /// Ends the calls of libcups that ask the server while it lives, when they take longer than one answer may,
  /// or their answer is too large. isSilent() tells of it.
  [[nodiscard]] Watch watch(Patience patience = Patience::none) const {
    return Watch(get(), *bounds_, patience);
  }

  /// Whether the server has left a request without an answer, or one without an end. libcups does not report
  /// that of every call.
  [[nodiscard]] bool isSilent() const noexcept { return bounds_->givenUp != GivenUp::no; }

  /// Leaves the connection as it is and makes another to the same server. Failure when it takes none.
  void reconnect() const;

  /// Does the work, which asks the server; where that raises a Failure, again over a new connection, for as
  /// long as one answer may take. Then the last Failure is raised.
  void persist(const std::function<void()>& work) const;

  /// Failure when the connection is encrypted and its server is not the one that it was before. libcups makes
  /// new connections without a look at that, so what came over them is believed only afterwards.
  void checkServer() const;

  /// What the user is to know about the server, though the work goes on; none when there is nothing.
  [[nodiscard]] const std::optional<std::string>& warning() const noexcept { return warning_; }

  /// "the print server at localhost:631".
  [[nodiscard]] std::string server() const;

  /// Whether the server has turned the last request down before it looked into it. Asking again is in vain.
  [[nodiscard]] bool isTurnedDown() const noexcept;

  /// Why the last call of libcups failed: the server stays silent, or what its refusal means.
  [[nodiscard]] Failure lastFailure() const;

 private:
  [[nodiscard]] bool connect() const;
  [[nodiscard]] bool isToBeClosed() const;
  void drain() const;
  [[nodiscard]] Failure brokenConnection() const;

  HttpHandle http_;
  std::optional<std::string> server_;
  mutable std::optional<std::string> warning_;
  // At an address that stays when the connection is moved.
  std::unique_ptr<Bounds> bounds_;
};

/// A new request about a printer.
MessageHandle printerRequest(ipp_op_t operation, const std::string& printer);
/// The resource that requests about a printer go to.
std::string printerResource(const std::string& printer);

}  // namespace tandemtrim::host
