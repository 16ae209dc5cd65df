#pragma once

#include <algorithm>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "host/file_descriptor.hpp"

namespace tandemtrim::test {

/// An HTTP answer with this status and header fields, each of which ends in "\r\n".
inline std::string httpAnswer(const std::string& status, const std::string& fields = "",
                              const std::string& content = "") {
  return "HTTP/1.1 " + status + "\r\n" + fields + "Content-Length: " + std::to_string(content.size()) +
         "\r\n\r\n" + content;
}

/// An IPP answer with this status and encoded attributes.
inline std::string ippAnswer(int status, const std::string& attributes = "", const std::string& fields = "") {
  const std::string head{'\2', '\0', static_cast<char>(status >> 8), static_cast<char>(status), 0, 0,
                         0,    '\1'};
  return httpAnswer("200 OK", fields + "Content-Type: application/ipp\r\n", head + attributes + "\3");
}

/// A server on a port of this machine. It sends one of the answers for each request, in order, and is silent
/// after the last one. It closes a connection after an answer that says so.
class PlannedServer {
 public:
  explicit PlannedServer(std::vector<std::string> answers = {}) : answers_(std::move(answers)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_.get(), any, size) != 0 || listen(listener_.get(), 9) != 0 ||
        getsockname(listener_.get(), any, &size) != 0)
      throw std::runtime_error("no port");
    port_ = ntohs(address.sin_port);
    thread_ = std::jthread([this] { serve(); });
  }
  PlannedServer(const PlannedServer&) = delete;
  PlannedServer& operator=(const PlannedServer&) = delete;
  ~PlannedServer() {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
    shutdown(listener_.get(), SHUT_RDWR);
    shutdown(client_, SHUT_RDWR);
  }

  [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  [[nodiscard]] in_port_t port() const { return port_; }
  /// The bytes of each request so far, the last of which may be incomplete.
  [[nodiscard]] std::vector<std::string> requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
  }
  /// How many connections have been accepted.
  [[nodiscard]] std::size_t connections() const {
    const std::lock_guard lock(mutex_);
    return connections_;
  }

 private:
  void serve() {
    for (;;) {
      const host::FileDescriptor client(accept(listener_.get(), nullptr, nullptr));
      if (!client.isOpen()) return;
      {
        const std::lock_guard lock(mutex_);
        if (isEnding_) return;
        ++connections_;
        client_ = client.get();
      }
      answer(client.get());
      const std::lock_guard lock(mutex_);
      client_ = -1;
    }
  }

  void answer(int client) {
    std::string left;
    for (bool isNew = true;;) {
      std::string piece(4096, '\0');
      const auto size = recv(client, piece.data(), piece.size(), 0);
      if (size <= 0) return;
      left.append(piece, 0, static_cast<std::size_t>(size));
      const std::lock_guard lock(mutex_);
      if (isNew) requests_.emplace_back();
      requests_.back() = left;
      isNew = isWhole(left);
      if (!isNew || answers_.empty()) continue;
      const auto next = std::exchange(answers_.front(), {});
      answers_.erase(answers_.begin());
      left.clear();
      send(client, next.data(), next.size(), MSG_NOSIGNAL);
      if (next.empty() || next.find("Connection: close") != std::string::npos) return;
    }
  }

  static bool isWhole(const std::string& request) {
    const std::string length = "Content-Length: ";
    const auto end = request.find("\r\n\r\n");
    if (end == std::string::npos) return false;
    const auto field = request.find(length);
    const auto size = field > end ? 0 : std::stoul(request.substr(field + length.size()));
    return request.size() >= end + 4 + size;
  }

  host::FileDescriptor listener_{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  in_port_t port_ = 0;
  mutable std::mutex mutex_;
  std::vector<std::string> answers_;
  std::vector<std::string> requests_;
  std::size_t connections_ = 0;
  int client_ = -1;
  bool isEnding_ = false;
  std::jthread thread_;
};

}  // namespace tandemtrim::test
