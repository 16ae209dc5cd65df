#include "host/cups/connection/connection.hpp"

#include <new>
#include <stdexcept>
#include <string>

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "host/file_descriptor.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::HasSubstr;

// A port of this machine that accepts connections and never answers.
class SilentServer {
 public:
  SilentServer() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_.get(), any, size) != 0 || listen(listener_.get(), 1) != 0 ||
        getsockname(listener_.get(), any, &size) != 0)
      throw std::runtime_error("no port");
    port_ = ntohs(address.sin_port);
  }

  [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  // What the client has sent so far.
  [[nodiscard]] std::string heard() const {
    const FileDescriptor client(accept(listener_.get(), nullptr, nullptr));
    std::string bytes(1024, '\0');
    const auto size = recv(client.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    return size <= 0 ? "" : bytes.substr(0, static_cast<std::size_t>(size));
  }

 private:
  FileDescriptor listener_{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  in_port_t port_ = 0;
};

TEST(TheTimeForAnAnswer, IsAsManySecondsAsTheVariableSaysOrTen) {
  using std::chrono::seconds;
  EXPECT_EQ(timeoutFrom("1"), seconds(1));
  EXPECT_EQ(timeoutFrom("60"), seconds(60));
  EXPECT_EQ(timeoutFrom(nullptr), seconds(10));
  for (const char* text : {"", "0", "-1", "5x", " 5", "1.5", "one", "99999999999"})
    EXPECT_EQ(timeoutFrom(text), seconds(10)) << text;
}

// libcups leaves out a text if memory for it runs out.
TEST(ARequest, ThatIsIncompleteForLackOfMemoryIsNotSent) {
  const SilentServer server;
  const Connection connection(server.address());
  auto request = printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, "Morva");
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, nullptr);
  EXPECT_THROW(connection.ask(std::move(request), "/"), std::bad_alloc);
  EXPECT_THROW(connection.ask(nullptr, "/"), std::bad_alloc);
  EXPECT_EQ(server.heard(), "");
}

TEST(AConnection, ToAPortWithoutAServerSaysThatNobodyAnswersThere) {
  std::string address;
  {
    const SilentServer server;
    address = server.address();
  }
  EXPECT_EQ(std::string(failureOf([&] { Connection connection{address}; }).what()),
            "no print server answers at " + address + "; start CUPS there, or name another server with -h");
}

}  // namespace
}  // namespace tandemtrim::host
