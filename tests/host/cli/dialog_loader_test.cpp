#include "host/cli/dialog_loader.hpp"

#include <cstdlib>

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

class TheDialog : public testing::Test {
 protected:
  TheDialog() {
    unsetenv("WAYLAND_DISPLAY");
    setenv("DISPLAY", ":99", 1);
    line.files = {"document.pdf"};
  }
  ~TheDialog() override { unsetenv("DISPLAY"); }

  CommandLine line;
};

TEST_F(TheDialog, IsShownForFilesIfThereIsAScreen) {
  EXPECT_TRUE(wantsDialog(line));
  setenv("DISPLAY", "", 1);
  EXPECT_FALSE(wantsDialog(line));
  setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  EXPECT_TRUE(wantsDialog(line));
  unsetenv("WAYLAND_DISPLAY");
}

TEST_F(TheDialog, IsNotShownWithoutFiles) {
  line.files.clear();
  EXPECT_FALSE(wantsDialog(line));
}

TEST_F(TheDialog, IsNotShownForStandardInput) {
  for (const auto& files : {std::vector<std::string>{"-"}, {"document.pdf", "-"}}) {
    line.files = files;
    EXPECT_FALSE(wantsDialog(line));
  }
}

TEST_F(TheDialog, IsShownIfTheCommandLineHasOptionsOfTheJob) {
  line.options = {{"copies", "2"}, {"job-priority", "7"}};
  line.title = "Title";
  line.printer = "Morva";
  EXPECT_TRUE(wantsDialog(line));
}

TEST_F(TheDialog, IsNotShownIfTheCommandLineSetsThePanel) {
  line.inputs = {{"Top", "12"}};
  EXPECT_FALSE(wantsDialog(line));
}

TEST_F(TheDialog, IsNotShownIfAnOptionDoesNotFitIt) {
  for (bool CommandLine::*option :
       {&CommandLine::summary, &CommandLine::json, &CommandLine::force, &CommandLine::saveAsDefault,
        &CommandLine::withoutPanel, &CommandLine::silent, &CommandLine::lenient, &CommandLine::wait}) {
    auto other = line;
    other.*option = true;
    EXPECT_FALSE(wantsDialog(other));
  }
}

TEST_F(TheDialog, ObeysItsSwitchBeforeAllElse) {
  line.dialog = false;
  EXPECT_FALSE(wantsDialog(line));
  line.dialog = true;
  line.summary = true;
  unsetenv("DISPLAY");
  EXPECT_TRUE(wantsDialog(line));
}

}  // namespace
}  // namespace tandemtrim::host
