#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/cups/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/job/documents.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Tells how much of a document is on its way: its name, the bytes sent and, when it is known, its size. What
/// it raises ends the sending.
using Progress =
    std::function<void(const std::string& name, std::uint64_t sent, std::optional<std::uint64_t> size)>;

/// Sends all documents as one job with these options and gives the job's number. Failure when the server
/// refuses or falls silent; the part of the job that it has is cancelled.
int sendJob(const Connection& connection, const Printer& printer, const std::string& title,
            const Options& options, std::vector<Document>& documents, const Progress& progress);

/// The format that the documents are announced in: what the options document-format and raw say, else for the
/// server to find out.
std::string documentFormat(const Options& options);

}  // namespace tandemtrim::host
