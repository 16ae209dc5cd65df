#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "host/cups/connection/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Tells how much of a document is on its way: the number of its job, none before there is one; its name, the
/// bytes sent and, when it is known, its size. What it raises ends the sending.
using Progress = std::function<void(std::optional<int> job, const std::string& name, std::uint64_t sent,
                                    std::optional<std::uint64_t> size)>;

/// A document that was sent.
struct SentDocument {
  std::uint64_t bytes = 0;
  /// Why the server did not say that it has the document, though all of it was sent; none when it did.
  std::optional<Failure> unanswered;
};

/// A job at the server. It is cancelled unless it is kept.
class UnfinishedJob {
 public:
  /// Makes a job without a document. Failure when the server refuses it.
  UnfinishedJob(const Connection& connection, const Printer& printer, const std::string& title,
                const Options& options);
  UnfinishedJob(const UnfinishedJob&) = delete;
  UnfinishedJob& operator=(const UnfinishedJob&) = delete;
  ~UnfinishedJob() { cancel(); }

  [[nodiscard]] int number() const noexcept { return number_; }

  /// Failure when the document cannot be read or sent to its end, or the server refuses it.
  SentDocument send(Document& document, const std::string& format, bool last, const Progress& progress) const;

  /// Leaves the job to the server.
  void keep() noexcept { isKept_ = true; }
  /// Whether the server says that it has cancelled the job.
  bool cancel();

 private:
  const Connection& connection_;
  const Printer& printer_;
  int number_;
  bool isKept_ = false;
};

/// The format that the documents are announced in: what the options raw and document-format say, the former
/// before the latter as in lp, else for the server to find out.
std::string documentFormat(const Options& options);

}  // namespace tandemtrim::host
