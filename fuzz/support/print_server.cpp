#include "fuzz/support/print_server.hpp"

#include <array>
#include <cstdlib>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

#include <arpa/inet.h>
#include <cups/ipp.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "fuzz/support/target.hpp"

namespace tandemtrim::fuzz {
namespace {

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
      for (int client = 0; (client = accept(listener_, nullptr, nullptr)) >= 0;) {
        const int atOnce = 1;
        setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
        std::thread([this, client] { serve(client); }).detach();
      }
    }).detach();
  }

  [[nodiscard]] std::string place() const {
    sockaddr_in found{};
    socklen_t size = sizeof found;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&found), &size);
    return "127.0.0.1:" + std::to_string(ntohs(found.sin_port));
  }

  void begin(std::deque<std::string> answers) {
    const std::scoped_lock lock(mutex_);
    answers_ = std::move(answers);
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

}  // namespace

std::string serveAnswers(std::deque<std::string> answers) {
  // Lives until the process ends, as its threads do.
  static auto& only = *new Server;
  only.begin(std::move(answers));
  return only.place();
}

}  // namespace tandemtrim::fuzz
