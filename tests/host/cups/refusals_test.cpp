#include "host/cups/connection/refusals.hpp"

#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "host/cups/connection/connection.hpp"
#include "tests/host/cups/planned_server.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::httpAnswer;
using test::ippAnswer;
using test::PlannedServer;
using testing::HasSubstr;
using testing::StartsWith;

// A status message, as an attribute of an answer.
std::string message(const std::string& words) {
  const std::string name = "status-message";
  return std::string("\1\x41\0", 3) + static_cast<char>(name.size()) + name + '\0' +
         static_cast<char>(words.size()) + words;
}

// The refusal in this answer.
Failure refusalIn(const std::string& answer) {
  const PlannedServer server({answer});
  const Connection connection(server.address());
  try {
    static_cast<void>(connection.ask(printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, "Morva"), "/"));
  } catch (const Failure&) {
  }
  return refusal(connection.get(), "it");
}

TEST(ARefusal, OfEachKindSaysWhatToDo) {
  for (int status = IPP_STATUS_ERROR_BAD_REQUEST; status <= IPP_STATUS_ERROR_TOO_MANY_DOCUMENTS; ++status) {
    if (status == IPP_STATUS_ERROR_NOT_AUTHENTICATED) continue;
    const auto failure = refusalIn(ippAnswer(status));
    EXPECT_THAT(failure.fact().english(), StartsWith("the print server at it ")) << status;
    EXPECT_THAT(failure.remedy(), StartsWith("; ")) << status;
    test::inADialog(failure.fact());
    if (status == IPP_STATUS_ERROR_ACCOUNT_AUTHORIZATION_FAILED) status = IPP_STATUS_ERROR_INTERNAL - 1;
  }
}

TEST(ARefusal, QuotesTheServersMessage) {
  EXPECT_EQ(refusalIn(ippAnswer(IPP_STATUS_ERROR_FORBIDDEN)).fact().english(),
            "the print server at it does not allow that");
  EXPECT_EQ(refusalIn(ippAnswer(IPP_STATUS_ERROR_FORBIDDEN, message("Not today."))).fact().english(),
            "the print server at it does not allow that (Not today.)");
}

TEST(ARefusal, OfAnUnknownKindIsQuoted) {
  const auto failure = refusalIn(ippAnswer(IPP_STATUS_ERROR_COMPRESSION_ERROR));
  EXPECT_EQ(failure.fact().english(),
            "the print server at it refuses the request (client-error-compression-error)");
  EXPECT_THAT(failure.remedy(), StartsWith("; "));
  EXPECT_EQ(test::inADialog(failure.fact()), failure.fact().english());
  EXPECT_THAT(refusalIn(ippAnswer(IPP_STATUS_ERROR_COMPRESSION_ERROR, message("Not so."))).fact().english(),
              HasSubstr("(Not so.)"));
}

TEST(ARefusal, ByHttpHasTheMeaningOfItsStatus) {
  const std::vector<std::pair<int, std::string>> meanings{
      {400, "does not understand the request"},
      {403, "does not allow that"},
      {404, "does not have what was requested"},
      {410, "no longer has what was requested"},
      {408, "waited too long for the rest of the request"},
      {413, "does not accept a document of this size"},
      {500, "has an internal error"},
      {502, "is out of service at present"},
      {503, "is out of service at present"},
      {504, "is out of service at present"},
      {418, "cannot do that"},
      {599, "cannot do that"}};
  for (const auto& [status, words] : meanings)
    EXPECT_EQ(refusalIn(httpAnswer(std::to_string(status) + " Refused")).fact().english(),
              "the print server at it " + words + " (HTTP status " + std::to_string(status) + ")");
}

}  // namespace
}  // namespace tandemtrim::host
