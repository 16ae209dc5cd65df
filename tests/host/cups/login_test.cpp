#include "host/cups/connection/login.hpp"

#include <functional>
#include <vector>

#include <gmock/gmock.h>

#include "host/cups/connection/connection.hpp"
#include "tests/host/cups/planned_server.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using test::httpAnswer;
using test::ippAnswer;
using test::PlannedServer;
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::string kLoginNeeded = httpAnswer("401 Unauthorized", "WWW-Authenticate: Basic realm=\"CUPS\"\r\n");

// libcups keeps the user and the question for a login for each thread.
void onAThread(const std::function<void()>& work) { std::jthread(work).join(); }

void askAt(const PlannedServer& server) {
  const Connection connection(server.address());
  static_cast<void>(connection.ask(printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, "Morva"), "/"));
}

TEST(ALogin, IsAskedForWhenTheServerNeedsIt) {
  onAThread([] {
    const PlannedServer server({kLoginNeeded, ippAnswer(0)});
    std::vector<LoginQuestion> asked;
    answerLogins([&](const LoginQuestion& question) {
      asked.push_back(question);
      return Login{"mira", "secret"};
    });
    EXPECT_FALSE(isLoginGiven());
    askAt(server);
    EXPECT_TRUE(isLoginGiven());
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_FALSE(asked[0].isRepeated);
    EXPECT_EQ(asked[0].server, "127.0.0.1");
    EXPECT_THAT(asked[0].prompt, HasSubstr("127.0.0.1"));
    EXPECT_STREQ(cupsUser(), "mira");
    // "mira:secret"
    EXPECT_THAT(server.requests().back(), HasSubstr("Authorization: Basic bWlyYTpzZWNyZXQ="));
  });
}

TEST(ALogin, IsAskedForThreeTimesAtMost) {
  onAThread([] {
    const PlannedServer server(std::vector<std::string>(20, kLoginNeeded));
    std::vector<bool> repeated;
    answerLogins([&](const LoginQuestion& question) {
      repeated.push_back(question.isRepeated);
      return Login{"mira", "wrong"};
    });
    const auto failure = failureOf([&] { askAt(server); });
    EXPECT_THAT(repeated, testing::ElementsAre(false, true, true));
    EXPECT_EQ(failure.trouble(), Trouble::unauthorized);
    EXPECT_EQ(failure.fact().english(), "Unauthorized: the print server at " + server.address() +
                                            " does not accept that password for mira");
    EXPECT_THAT(failure.remedy(), StartsWith("; try again with another, print as another user with -U, or "));
  });
}

TEST(ALogin, ThatTheUserDeclinesIsNotAskedForAgain) {
  onAThread([] {
    const PlannedServer server(std::vector<std::string>(20, kLoginNeeded));
    int asked = 0;
    answerLogins([&](const LoginQuestion&) -> std::optional<Login> {
      ++asked;
      return std::nullopt;
    });
    for (int time = 0; time < 2; ++time) {
      const auto failure = failureOf([&] { askAt(server); });
      EXPECT_EQ(failure.trouble(), Trouble::unauthorized);
      EXPECT_EQ(failure.fact().english(), "Unauthorized: the print server at " + server.address() +
                                              " requires the password of " + cupsUser() +
                                              " and received none");
      EXPECT_THAT(failure.remedy(),
                  StartsWith("; type it at a terminal, print as another user with -U, or "));
    }
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(isLoginGiven());
    EXPECT_THAT(server.requests(), Not(Contains(HasSubstr("Authorization: Basic"))));
  });
}

}  // namespace
}  // namespace tandemtrim::host
