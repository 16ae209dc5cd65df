#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/cups/printer.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Reports how much of a document is sent: the number of its job (nullopt before there is one), its name, the
/// bytes sent and, if known, its size. An exception from it ends the sending.
using Progress = std::function<void(std::optional<int> job, const std::string& name, std::uint64_t sent,
                                    std::optional<std::uint64_t> size)>;

/// A document that was sent.
struct SentDocument {
  std::uint64_t bytes = 0;
  /// Why the server did not confirm the document, though all of it was sent; nullopt if it did.
  std::optional<Failure> unanswered;
};

/// A job at the server. The destructor cancels it unless keep() was called.
class UnfinishedJob {
 public:
  /// Makes a job without a document. Failure when the server refuses it.
  UnfinishedJob(const Connection& connection, const Printer& printer, const std::string& title,
                const Options& options);
  UnfinishedJob(const UnfinishedJob&) = delete;
  UnfinishedJob& operator=(const UnfinishedJob&) = delete;
  ~UnfinishedJob() { cancel(); }

  [[nodiscard]] int number() const noexcept { return number_; }

  /// Sends a document, the job's last one if `last`. Failure when it cannot be read or sent completely, or
  /// the server refuses it.
  SentDocument send(Document& document, const std::string& format, bool last, const Progress& progress) const;

  /// Leaves the job to the server.
  void keep() noexcept { isKept_ = true; }
  /// Cancels the job unless it is kept or cancelled already; returns whether the server confirms that.
  bool cancel();

 private:
  const Connection& connection_;
  const Printer& printer_;
  int number_;
  bool isKept_ = false;
};

/// The format to send the documents as. The option raw overrides document-format, as in lp; without either,
/// the server detects the format.
std::string documentFormat(const Options& options);

/// The numbers of the jobs in a list from the server that have this mark: the value of the attribute
/// tandem-trim-request, which identifies the job of one request.
std::vector<int> numbersOfMarked(const MessageHandle& list, const std::string& mark);

}  // namespace tandemtrim::host
