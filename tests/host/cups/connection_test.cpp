#include "host/cups/connection/connection.hpp"

#include <array>
#include <cstdlib>
#include <new>
#include <string>

#include <gmock/gmock.h>

#include "host/cups/connection/attributes.hpp"
#include "tests/host/cups/planned_server.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using test::httpAnswer;
using test::ippAnswer;
using test::PlannedServer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

const std::string kNotFound = httpAnswer("404 Not Found");
const std::string kBusy = httpAnswer("503 Service Unavailable");

MessageHandle question() { return printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, "Morva"); }

// The failure of a request to a server with these answers.
Failure failureAt(const PlannedServer& server) {
  const Connection connection(server.address());
  return failureOf([&] { static_cast<void>(connection.ask(question(), "/printers/Morva")); });
}

// Sets the time for an answer for the rest of the test.
class WithATimeout : public testing::Test {
 protected:
  WithATimeout() { setenv("TANDEM_TRIM_TIMEOUT", "1", 1); }
  ~WithATimeout() override { unsetenv("TANDEM_TRIM_TIMEOUT"); }
};
class AConnection : public WithATimeout {};
class AnAnswer : public WithATimeout {};
class Persistence : public WithATimeout {};

TEST(TheTimeForAnAnswer, IsAsManySecondsAsTheVariableSaysOrTen) {
  using std::chrono::seconds;
  EXPECT_EQ(timeoutFrom("1"), seconds(1));
  EXPECT_EQ(timeoutFrom("60"), seconds(60));
  EXPECT_EQ(timeoutFrom(nullptr), seconds(10));
  for (const char* text : {"", "0", "-1", "5x", " 5", "1.5", "one", "99999999999"})
    EXPECT_EQ(timeoutFrom(text), seconds(10)) << text;
}

TEST(APrintersRequest, NamesThePrinterAndTheUser) {
  const auto request = printerRequest(IPP_OP_CREATE_JOB, "Morva 2/b");
  EXPECT_EQ(ippGetOperation(request.get()), IPP_OP_CREATE_JOB);
  EXPECT_EQ(textIn(request, "printer-uri"),
            "ipp://localhost:" + std::to_string(ippPort()) + "/printers/Morva%202/b");
  EXPECT_EQ(textIn(request, "requesting-user-name"), cupsUser());
}

// libcups leaves out a text if memory for it runs out.
TEST(ARequest, ThatIsIncompleteForLackOfMemoryIsNotSent) {
  const PlannedServer server;
  const Connection connection(server.address());
  auto request = question();
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, nullptr);
  EXPECT_THROW(static_cast<void>(connection.ask(std::move(request), "/")), std::bad_alloc);
  EXPECT_THROW(static_cast<void>(connection.ask(nullptr, "/")), std::bad_alloc);
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(AConnection, ToAPortWithoutAServerSaysThatNobodyAnswersThere) {
  std::string address;
  {
    const PlannedServer server;
    address = server.address();
  }
  EXPECT_EQ(std::string(failureOf([&] { Connection connection{address}; }).what()),
            "no print server answers at " + address + "; start CUPS there, or name another server with -h");
}

TEST_F(AConnection, ServesSeveralRequests) {
  const PlannedServer server({ippAnswer(0), ippAnswer(0x0406), ippAnswer(1)});
  const Connection connection(server.address());
  EXPECT_EQ(serverName(), server.address());
  EXPECT_EQ(connection.server(), "the print server at " + server.address());
  for (const auto status : {IPP_STATUS_OK, IPP_STATUS_ERROR_NOT_FOUND, IPP_STATUS_OK_IGNORED_OR_SUBSTITUTED})
    EXPECT_EQ(ippGetStatusCode(connection.ask(question(), printerResource("Morva")).get()), status);
  EXPECT_FALSE(connection.isSilent());
  EXPECT_EQ(connection.warning(), std::nullopt);
  EXPECT_EQ(server.connections(), 1U);
  EXPECT_THAT(server.requests(), testing::Each(StartsWith("POST /printers/Morva HTTP/1.1\r\n")));
}

TEST_F(AConnection, ThatTheServerClosesAfterAnAnswerIsReplaced) {
  const PlannedServer server(
      {ippAnswer(0, "", "Connection: Close\r\nConnection: close\r\n"), ippAnswer(0), ippAnswer(0)});
  const Connection connection(server.address());
  for (int request = 0; request < 3; ++request) EXPECT_TRUE(connection.ask(question(), "/"));
  EXPECT_EQ(server.connections(), 2U);
  EXPECT_THAT(server.requests(), SizeIs(3));
}

TEST_F(AConnection, ToTheServerOfTheEnvironmentIsTheUsualOne) {
  const PlannedServer server({ippAnswer(0)});
  setenv("CUPS_SERVER", server.address().c_str(), 1);
  // libcups reads the variable once in each thread.
  std::jthread([&] {
    const Connection connection(std::nullopt);
    EXPECT_EQ(serverName(), server.address());
    EXPECT_TRUE(connection.ask(question(), "/"));
  }).join();
  unsetenv("CUPS_SERVER");
}

TEST(AServersName, IsThePathOfItsSocketWithoutAPort) {
  std::jthread([] {
    cupsSetServer("/run/cups/cups.sock");
    EXPECT_EQ(serverName(), "/run/cups/cups.sock");
  }).join();
}

TEST_F(AnAnswer, ThatDoesNotComeIsWaitedForUntilItsTimeHasPassed) {
  const PlannedServer server;
  const Connection connection(server.address());
  const auto start = std::chrono::steady_clock::now();
  const auto failure = failureOf([&] { static_cast<void>(connection.ask(question(), "/")); });
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  EXPECT_EQ(failure.what(),
            "the print server at " + server.address() +
                " did not answer within 1 s; see whether it is still running, or name another "
                "server with -h");
  EXPECT_EQ(failure.trouble(), Trouble::noServer);
  EXPECT_TRUE(connection.isSilent());
  connection.persist([&] { EXPECT_FALSE(connection.isSilent()); });
}

TEST_F(AnAnswer, ThatBreaksOffIsReported) {
  const auto words = " broke the connection; see whether it is still running";
  for (const auto& answer : {std::string(), std::string("HTTP/1.1 200 OK\r\nConnection: close\r\n"),
                             httpAnswer("200 OK", "Connection: close\r\n", "nonsense")}) {
    const PlannedServer server({answer, answer, answer, answer, answer, answer});
    const auto failure = failureAt(server);
    EXPECT_EQ(failure.what(), "the print server at " + server.address() + words) << answer;
    EXPECT_EQ(failure.trouble(), Trouble::noServer);
  }
}

TEST_F(AnAnswer, ThatSendsRequestsElsewhereIsNotFollowed) {
  for (const char* status : {"300 Multiple Choices", "301 Moved Permanently", "399 Nothing"}) {
    const PlannedServer server({httpAnswer(status, "Location: /\r\n"), ippAnswer(0)});
    const auto failure = failureAt(server);
    EXPECT_THAT(failure.what(),
                StartsWith("the print server at " + server.address() + " sends requests elsewhere ("));
    EXPECT_THAT(failure.what(), HasSubstr("; name the print server itself with -h"));
    EXPECT_THAT(server.requests(), SizeIs(1));
  }
}

TEST_F(AnAnswer, ThatRefusesIsReportedAtOnce) {
  for (const auto& [status, words] : std::array<std::pair<const char*, const char*>, 2>{
           {{"400 Bad Request", " does not understand the request (HTTP status 400)"},
            {"503 Service Unavailable", " is out of service at present (HTTP status 503)"}}}) {
    const PlannedServer server({httpAnswer(status), ippAnswer(0)});
    EXPECT_THAT(failureAt(server).what(), StartsWith("the print server at " + server.address() + words));
    EXPECT_THAT(server.requests(), SizeIs(1));
  }
}

TEST_F(AnAnswer, ToARequestAboutAPrinterThatTurnsItDownIsFinal) {
  for (const auto& [status, isFinal] :
       std::array<std::pair<const char*, bool>, 5>{{{"200 OK", false},
                                                    {"400 Bad Request", true},
                                                    {"403 Forbidden", true},
                                                    {"499 Nothing", true},
                                                    {"500 Internal Server Error", false}}}) {
    const PlannedServer server({httpAnswer(status)});
    const Connection connection(server.address());
    failureOf([&] { static_cast<void>(connection.ask(question(), "/")); });
    EXPECT_EQ(connection.isTurnedDown(), isFinal) << status;
  }
}

TEST_F(Persistence, RepeatsARequestOverANewConnection) {
  const PlannedServer server({kBusy, kBusy, ippAnswer(0)});
  const Connection connection(server.address());
  int attempts = 0;
  connection.persist([&] {
    ++attempts;
    static_cast<void>(connection.ask(question(), "/"));
  });
  EXPECT_EQ(attempts, 3);
  EXPECT_GE(server.connections(), 3U);
}

TEST_F(Persistence, KeepsAConnectionThatWorks) {
  const PlannedServer server({ippAnswer(0), ippAnswer(0)});
  const Connection connection(server.address());
  for (int time = 0; time < 2; ++time)
    connection.persist([&] { static_cast<void>(connection.ask(question(), "/")); });
  EXPECT_EQ(server.connections(), 1U);
}

TEST_F(Persistence, EndsAtOnceWhenTheServerTurnsTheRequestDown) {
  const PlannedServer server({kNotFound, ippAnswer(0)});
  const Connection connection(server.address());
  const auto failure =
      failureOf([&] { connection.persist([&] { static_cast<void>(connection.ask(question(), "/")); }); });
  EXPECT_THAT(failure.what(), HasSubstr("does not have what was requested"));
  EXPECT_THAT(server.requests(), SizeIs(1));
}

TEST_F(Persistence, EndsAtOnceWhenTheServerIsNotTrusted) {
  const PlannedServer server;
  const Connection connection(server.address());
  int attempts = 0;
  failureOf([&] {
    connection.persist([&] {
      ++attempts;
      throw Failure(Trouble::insecure, "another server");
    });
  });
  EXPECT_EQ(attempts, 1);
}

TEST_F(Persistence, LastsAsLongAsOneAnswerMayTake) {
  const PlannedServer server(std::vector<std::string>(20, ippAnswer(0)));
  const Connection connection(server.address());
  std::size_t attempts = 0;
  const auto start = std::chrono::steady_clock::now();
  const auto failure = failureOf([&] {
    connection.persist([&] {
      static_cast<void>(connection.ask(question(), "/"));
      EXPECT_EQ(server.connections(), ++attempts);
      throw Failure("attempt " + std::to_string(attempts));
    });
  });
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  EXPECT_EQ(failure.what(), "attempt " + std::to_string(attempts));
  EXPECT_GT(attempts, 1U);
  EXPECT_LE(attempts, 11U) << "a tenth of a second passes between two attempts";
}

TEST_F(Persistence, SaysThatAServerWhichIsGoneBrokeTheConnection) {
  std::optional<PlannedServer> server(std::in_place, std::vector<std::string>{""});
  const Connection connection(server->address());
  const auto failure = failureOf([&] {
    connection.persist([&] {
      server.reset();
      static_cast<void>(connection.ask(question(), "/"));
    });
  });
  EXPECT_EQ(failure.what(),
            connection.server() +
                " broke the connection and does not accept a new one; see whether it is still running");
}

}  // namespace
}  // namespace tandemtrim::host
