#include "host/dialog/settings/notification_choice.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <glibmm/miscutils.h>
#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

class TheChoiceOfNotifications : public testing::Test {
 protected:
  void SetUp() override { fs::remove_all(file_.parent_path()); }
  void write(const std::string& text) const {
    fs::create_directories(file_.parent_path());
    std::ofstream(file_) << text;
  }
  [[nodiscard]] std::string text() const {
    std::ifstream file(file_);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const fs::path file_ = fs::path(Glib::get_user_config_dir()) / "tandem-trim/dialog.conf";
  std::vector<std::string> messages_;
  const Report report_ = [this](const std::string& message) { messages_.push_back(message); };
};

TEST_F(TheChoiceOfNotifications, IsToShowThemUntilTheUserChoosesOtherwise) {
  EXPECT_TRUE(wantsNotification());
  for (const bool wants : {false, true}) {
    keepNotificationChoice(wants, report_);
    EXPECT_EQ(wantsNotification(), wants);
  }
  EXPECT_THAT(messages_, testing::IsEmpty());
}

TEST_F(TheChoiceOfNotifications, IsToShowThemIfItCannotBeUnderstood) {
  for (const std::string damaged : {"no file of keys", "[Dialog]\nNotify=perhaps\n", "[Dialog]\n", ""}) {
    write(damaged);
    EXPECT_TRUE(wantsNotification()) << damaged;
  }
  write("[Dialog]\nNotify=false\n" + std::string(1 << 16, '#'));
  EXPECT_TRUE(wantsNotification()) << "a huge file";
}

TEST_F(TheChoiceOfNotifications, LeavesTheOtherLinesOfItsFile) {
  write("# mine\n[Dialog]\nOther=7\n");
  keepNotificationChoice(false, report_);
  EXPECT_FALSE(wantsNotification());
  EXPECT_THAT(text(), testing::AllOf(testing::HasSubstr("# mine\n"), testing::HasSubstr("Other=7\n")));
}

TEST_F(TheChoiceOfNotifications, IsReportedIfItCannotBeKept) {
  fs::create_directories(file_.parent_path().parent_path());
  std::ofstream(file_.parent_path()) << "no folder";
  keepNotificationChoice(false, report_);
  EXPECT_THAT(messages_, testing::ElementsAre(testing::HasSubstr(file_.string())));
}

}  // namespace
}  // namespace tandemtrim::host
