#include "host/cups/printer.hpp"

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the user reads about the state of a printer that accepts the job.
std::vector<std::string> reportsAbout(const Printer& printer) {
  std::vector<std::string> reports;
  checkState(printer, [&](const std::string& text) { reports.push_back(text); });
  return reports;
}

Printer morva() {
  Printer printer;
  printer.name = "Morva";
  return printer;
}

TEST(APrinter, AcceptsJobsAndPrintsThemUnlessTheServerSaysOtherwise) {
  EXPECT_THAT(reportsAbout(morva()), IsEmpty());
}

TEST(APrinter, ThatIsStoppedIsReportedWithItsMessage) {
  auto printer = morva();
  printer.stopped = true;
  EXPECT_THAT(
      reportsAbout(printer),
      ElementsAre("Morva is stopped; the job waits until the printer is started with cupsenable Morva"));
  printer.stateMessage = "Paused";
  EXPECT_THAT(reportsAbout(printer),
              ElementsAre("Morva is stopped (Paused); the job waits until the printer is "
                          "started with cupsenable Morva"));
  EXPECT_EQ(test::inADialog(stoppedFact(printer)), "Morva is stopped (Paused)");
}

TEST(APrinter, ThatAcceptsNoJobsIsRefused) {
  auto printer = morva();
  printer.accepting = false;
  printer.stateMessage = "Moved";
  const auto failure = test::failureOf([&] { reportsAbout(printer); });
  EXPECT_EQ(failure.trouble(), Trouble::rejecting);
  EXPECT_STREQ(
      failure.what(),
      "Morva does not accept jobs (Moved); nothing was sent. Let it accept them again with cupsaccept "
      "Morva, or choose another printer with -d");
}

// The default printer, or "" for the server's, with these variables and texts of files.
std::string defaultWith(const char* lpdest, const char* printer, const std::vector<std::string>& files) {
  for (const auto& [name, value] : {std::pair("LPDEST", lpdest), {"PRINTER", printer}})
    value == nullptr ? unsetenv(name) : setenv(name, value, 1);
  const auto found = localDefault(files);
  for (const char* name : {"LPDEST", "PRINTER"}) unsetenv(name);
  return found ? found->printer + (found->instance ? " and " + *found->instance : "") : "";
}

TEST(TheDefaultPrinter, IsTheOneOfTheEnvironmentThenOfTheUserThenOfTheAdministrator) {
  const std::vector<std::string> files{"Default ForAll", "Default Own/draft"};
  EXPECT_EQ(defaultWith("First", "Second", files), "First");
  EXPECT_EQ(defaultWith(nullptr, "Second", files), "Second");
  EXPECT_EQ(defaultWith(nullptr, nullptr, files), "Own and draft");
  EXPECT_EQ(defaultWith(nullptr, nullptr, {"Default ForAll", "Dest Own"}), "ForAll");
  EXPECT_EQ(defaultWith(nullptr, nullptr, {"", ""}), "");
}

TEST(TheDefaultPrinter, InTheEnvironmentMayHaveAnInstance) {
  EXPECT_EQ(defaultWith("Morva/draft/2", nullptr, {}), "Morva and draft/2");
  EXPECT_EQ(defaultWith(nullptr, "Morva/draft", {}), "Morva and draft");
  EXPECT_EQ(defaultWith("/draft", nullptr, {}), " and draft");
}

TEST(TheDefaultPrinter, IsNoPrinterNamedLpUnlessLpdestSaysSo) {
  EXPECT_EQ(defaultWith(nullptr, "lp", {"", "Default Own"}), "Own");
  EXPECT_EQ(defaultWith("lp", nullptr, {"", "Default Own"}), "lp");
}

}  // namespace
}  // namespace tandemtrim::host
