#include "host/cups/queue_ppd.hpp"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>

#include "host/cups/connection/attributes.hpp"
#include "host/cups/ppd.hpp"
#include "host/failure.hpp"
#include "host/file_descriptor.hpp"

namespace tandemtrim::host {
namespace {

// A file in memory that cannot grow beyond the largest PPD.
FileDescriptor emptyFile() {
  FileDescriptor file(memfd_create("ppd", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  if (!file.isOpen() || ftruncate(file.get(), kLargestPpd) != 0 ||
      fcntl(file.get(), F_ADD_SEALS, F_SEAL_GROW) != 0)
    throw Failure(Trouble::details, Fact(std::string("a PPD cannot be stored: ") + std::strerror(errno),
                                         kUselessPpd, {{"[words]", std::strerror(errno)}}));
  return file;
}

// Whether the last answer arrived up to its length or last chunk. A PPD itself has no mark at its end.
bool isWhole(http_t* http) { return httpError(http) == 0 && httpGetState(http) == HTTP_STATE_WAITING; }

// The announced length of the server's answer; nullopt if it announced no length, or compressed the answer.
std::optional<off_t> announcedBytes(http_t* http) {
  const std::string_view digits = httpGetField(http, HTTP_FIELD_CONTENT_LENGTH);
  if (*httpGetField(http, HTTP_FIELD_CONTENT_ENCODING) != '\0') return std::nullopt;
  off_t bytes = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), bytes);
  return error == std::errc() && end == digits.data() + digits.size() ? std::optional(bytes) : std::nullopt;
}

// Whether the server offers the PPD at an address. A '?' in the printer's name would begin the address's
// query.
bool hasAddress(const Printer& printer) { return printer.name.find('?') == std::string::npos; }

// Fetches a printer's PPD into the file and returns the status of the answer.
http_status_t askForPpd(const Connection& connection, const Printer& printer, int file) {
  const auto watched = connection.watch();
  if (hasAddress(printer))
    return cupsGetFd(connection.get(), (printerResource(printer.name) + ".ppd").c_str(), file);
  auto request = printerRequest(IPP_OP_CUPS_GET_PPD, printer.name);
  refuseIncomplete(request);
  const MessageHandle answer(cupsDoIORequest(connection.get(), request.release(), "/", -1, file));
  const auto status = ippGetStatusCode(answer.get());
  if (status == IPP_STATUS_OK) return HTTP_STATUS_OK;
  return status == IPP_STATUS_ERROR_NOT_FOUND ? HTTP_STATUS_NOT_FOUND : HTTP_STATUS_ERROR;
}

// Fetches the PPD in one attempt: null when the printer has none, nullopt when the server breaks off.
std::optional<PpdHandle> fetch(const Connection& connection, const Printer& printer) {
  auto file = emptyFile();
  // Not by cupsGetPPD3, which asks for the queue's address and connects to it without a time-out.
  connection.prepare();
  const auto status = askForPpd(connection, printer, file.get());
  connection.checkServer();
  const auto size = lseek(file.get(), 0, SEEK_CUR);
  if (size == kLargestPpd)
    throw tooLargePpd("the PPD of " + printer.name + " that " + connection.server() + " sends");
  if (status == HTTP_STATUS_NOT_FOUND) return nullptr;
  if (connection.isSilent() || (status != HTTP_STATUS_OK && status != HTTP_STATUS_ERROR)) {
    const auto last = connection.lastFailure();
    throw last.trouble() == Trouble::other ? Failure(Trouble::details, last.fact(), last.remedy()) : last;
  }
  if (status == HTTP_STATUS_ERROR || !isWhole(connection.get()) || ftruncate(file.get(), size) != 0)
    return std::nullopt;
  // libcups ignores a failed write.
  if (hasAddress(printer) && announcedBytes(connection.get()).value_or(size) != size) return std::nullopt;
  return readPpd(std::move(file), "of " + printer.name + " at " + connection.server());
}

}  // namespace

PpdHandle queuePpd(const Connection& connection, const Printer& printer) {
  try {
    if (auto ppd = fetch(connection, printer)) return std::move(*ppd);
  } catch (const DamagedPpd&) {
    // Fetched again, like a PPD that breaks off.
  }
  connection.reconnect();
  if (auto ppd = fetch(connection, printer)) return std::move(*ppd);
  throw Failure(Trouble::details,
                Fact("the print server at [server] sent only part of the PPD of [printer]"_fact,
                     {{"[server]", serverName()}, {"[printer]", printer.name}}),
                "; see whether it is still running, or name a PPD file with --ppd");
}

}  // namespace tandemtrim::host
