// The input is a print server's answers to the requests that the program makes while it prints, with "|||"
// between them; each begins with the number of its status. With any answers the program continues or raises a
// Failure, and confirms no option that the server does not name.
#include <array>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <thread>

#include <arpa/inet.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include "fuzz/support/target.hpp"
#include "host/cups/queue_ppd.hpp"
#include "host/cups/sent_job.hpp"

namespace tandemtrim::fuzz {
namespace {

using namespace host;

constexpr std::string_view kBetweenAnswers = "|||";
constexpr std::array<unsigned, 5> kStatuses{IPP_STATUS_OK, IPP_STATUS_OK_IGNORED_OR_SUBSTITUTED,
                                            IPP_STATUS_ERROR_NOT_FOUND, IPP_STATUS_ERROR_BUSY, 0xFFFF};

// Reads through these words; false when the client has disconnected.
bool readPast(int client, std::string_view words, std::string& text) {
  for (char character = 0; !text.ends_with(words); text += character)
    if (recv(client, &character, 1, 0) != 1) return false;
  return true;
}

bool skip(int client, std::size_t count) {
  std::string rest(count, '\0');
  return count == 0 || recv(client, rest.data(), count, MSG_WAITALL) == static_cast<ssize_t>(count);
}

// Reads one request and returns its header; empty when the client has disconnected.
std::string request(int client) {
  std::string fields;
  if (!readPast(client, "\r\n\r\n", fields)) return {};
  const std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
  if (fields.find("100-continue") != std::string::npos) send(client, goOn.data(), goOn.size(), MSG_NOSIGNAL);
  constexpr std::string_view length = "Content-Length: ";
  if (const auto at = fields.find(length); at != std::string::npos) {
    if (!skip(client, std::strtoul(fields.c_str() + at + length.size(), nullptr, 10))) return {};
  } else if (fields.find("chunked") != std::string::npos) {
    for (std::size_t size = 1; size > 0;) {
      std::string line;
      if (!readPast(client, "\r\n", line)) return {};
      size = std::strtoul(line.c_str(), nullptr, 16);
      if (!skip(client, size + 2)) return {};
    }
  }
  return fields;
}

// A server that sends the answers in their order, and then closes its connections.
class Server {
 public:
  Server() {
    const sockaddr_in place{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    require(bind(listener_, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0, "a port is free");
    listen(listener_, SOMAXCONN);
    std::thread([this] {
      for (int client = 0; (client = accept(listener_, nullptr, nullptr)) >= 0;)
        std::thread([this, client] { serve(client); }).detach();
    }).detach();
  }

  std::string place() const {
    sockaddr_in found{};
    socklen_t size = sizeof found;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&found), &size);
    return "127.0.0.1:" + std::to_string(ntohs(found.sin_port));
  }

  void begin(std::string_view input) {
    const std::scoped_lock lock(mutex_);
    answers_.clear();
    for (std::size_t start = 0; start <= input.size();) {
      const auto end = std::min(input.find(kBetweenAnswers, start), input.size());
      answers_.emplace_back(input.substr(start, end - start));
      start = end + kBetweenAnswers.size();
    }
  }

 private:
  std::string next() {
    const std::scoped_lock lock(mutex_);
    if (answers_.empty()) return {};
    auto answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }

  void serve(int client) {
    for (std::string asked; !(asked = request(client)).empty();) {
      auto content = next();
      if (content.empty()) break;
      const auto status = kStatuses[static_cast<unsigned char>(content[0]) % kStatuses.size()];
      content.erase(0, 1);
      if (asked.starts_with("POST")) {
        const std::string beginning{2, 0, static_cast<char>(status >> 8), static_cast<char>(status), 0, 0,
                                    0, 1};
        content.insert(0, beginning);
      }
      const auto answer =
          "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content;
      send(client, answer.data(), answer.size(), MSG_NOSIGNAL);
    }
    close(client);
  }

  int listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  std::mutex mutex_;
  std::deque<std::string> answers_;
};

// Ends with the program, as its threads do.
Server& server() {
  static auto& only = *new Server;
  return only;
}

std::string document() {
  static const int file = memfd_create("document", 0);
  static const bool isWritten = write(file, "%PDF-1.4\n", 9) == 9;
  require(isWritten, "the document is written");
  return "/proc/self/fd/" + std::to_string(file);
}

void print() {
  const Connection connection(server().place());
  const auto printer = findPrinter(connection, "Morva");
  const auto ppd = queuePpd(connection, printer);
  std::vector<Document> documents;
  documents.emplace_back(document());
  auto job = sendAndConfirm(connection, printer, "Fuzzed", {{"MVTopMargin", "5"}, {"copies", "2"}}, documents,
                            [](auto&&...) {});
  require(!jobText(job).empty(), "every job has a text");
  if (!job.held || job.failure) return;
  require(job.held->lost.empty(), "a job that lacks an option is not confirmed");
  if (job.held->state >= IPP_JSTATE_CANCELED) waitForEnd(connection, printer, job, [](const auto&) {});
}

}  // namespace

void examine(std::string_view input) {
  setenv("TANDEM_TRIM_TIMEOUT", "1", 1);
  setenv("HOME", "/nonexistent", 1);
  server().begin(input);
  try {
    print();
  } catch (const Failure& failure) {
    require(*failure.what() != '\0', "every failure has a text");
  }
}

}  // namespace tandemtrim::fuzz
