#include "host/panel/trust.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/panel/panel_session.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/host/panel/fake_bundle.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;
using test::failureOf;
using testing::AllOf;
using testing::HasSubstr;
using testing::Optional;

constexpr uid_t kStranger = 54321;  // not in the system's list of users

PathEntry fileOfStranger(mode_t mode) {
  PathEntry entry{"/file"};
  entry.status.st_mode = S_IFREG | mode;
  entry.status.st_uid = kStranger;
  entry.status.st_gid = kStranger;
  return entry;
}

class APlace : public testing::Test {
 protected:
  void SetUp() override { folder_.write("above/place/file", ""); }
  void open(const fs::path& name, mode_t mode) const {
    ASSERT_EQ(chmod((folder_.path() / name).c_str(), mode), 0);
  }

  test::TemporaryFolder folder_;
  const fs::path above_ = folder_.path() / "above";
  const fs::path place_ = above_ / "place";
  const fs::path file_ = place_ / "file";
};

TEST_F(APlace, IsClosedToStrangersByDefault) {
  EXPECT_EQ(openToStrangers(file_), std::nullopt);
  EXPECT_EQ(openToStrangers(place_), std::nullopt);
}

TEST_F(APlace, IsOpenIfEverybodyMayWriteToItOrAFolderAboveIt) {
  for (const fs::path name : {"above", "above/place", "above/place/file"}) {
    open(name, 0777);
    const auto path = (folder_.path() / name).string();
    EXPECT_THAT(openToStrangers(file_), Optional(AllOf(HasSubstr("everybody can write to " + path + " "),
                                                       HasSubstr("chmod o-w " + path))));
    open(name, 0755);
  }
}

TEST_F(APlace, IsClosedBelowAStickyFolder) {
  open("above", 01777);
  EXPECT_EQ(openToStrangers(place_), std::nullopt);
  EXPECT_THAT(openToStrangers(above_), Optional(HasSubstr("everybody")));
}

TEST_F(APlace, MayBeWritableByTheUsersOwnGroupOnly) {
  open("above/place", 0775);
  ASSERT_EQ(chown(place_.c_str(), geteuid(), getegid()), 0);
  EXPECT_EQ(openToStrangers(file_), std::nullopt);
  // On Debian, the group mail may write to it.
  EXPECT_THAT(openToStrangers("/var/mail"),
              Optional(AllOf(HasSubstr("a group that is not your own"), HasSubstr("chmod g-w /var/mail"))));
}

TEST_F(APlace, IsOpenToAnOwnerWhoIsNotTrusted) {
  EXPECT_THAT(openToStrangers(file_, {kStranger}),
              Optional(AllOf(testing::StartsWith("/ belongs to root"), HasSubstr("copy it"))));
}

// As in a container whose files have owners that it does not list.
TEST(AFileOfAnOwnerWithoutAName, IsReportedWithTheOwnersNumber) {
  EXPECT_THAT(openToStrangers(fileOfStranger(0644), {0}),
              Optional(HasSubstr("/file belongs to user " + std::to_string(kStranger) + ",")));
  EXPECT_EQ(openToStrangers(fileOfStranger(0644), {0, kStranger}), std::nullopt);
}

TEST(AFileOfAnOwnerWithoutAName, MayBeWritableOnlyByTheRunningUsersOwnGroup) {
  const auto judged = [](const RunningUser& running) {
    return openToStrangers(fileOfStranger(0664), {0, kStranger}, running);
  };
  EXPECT_EQ(judged({kStranger, kStranger}), std::nullopt);
  EXPECT_THAT(judged({kStranger, 0}),
              Optional(HasSubstr("a group that is not your own may write to /file ")));
  EXPECT_THAT(judged({0, kStranger}),
              Optional(HasSubstr("a group that is not your own may write to /file ")));
}

TEST_F(APlace, IsJudgedByTheTargetOfALinkInItsPath) {
  open("above", 0777);
  fs::create_directory_symlink(above_, folder_.path() / "link");
  EXPECT_THAT(openToStrangers(folder_.path() / "link/place/file"), Optional(HasSubstr(above_.string())));
  fs::create_symlink("../above/./place/file", folder_.path() / "link/relative");
  EXPECT_THAT(openToStrangers(above_ / "relative"), Optional(HasSubstr(above_.string())));
}

TEST_F(APlace, IsJudgedByTheTargetOfALinkThatLeadsUp) {
  open("above", 0777);
  folder_.write("closed/file", "");
  fs::create_symlink("../above/place/file", folder_.path() / "closed/link");
  EXPECT_THAT(openToStrangers(folder_.path() / "closed/link"), Optional(HasSubstr(above_.string())));
}

TEST_F(APlace, WhoseLinksFormACircleIsNotFollowedForEver) {
  fs::create_symlink("b", folder_.path() / "a");
  fs::create_symlink("a", folder_.path() / "b");
  EXPECT_EQ(openToStrangers(folder_.path() / "a"), std::nullopt);
}

TEST(ABundleThatIsOpenToStrangers, IsRefusedBeforeItsModuleRuns) {
  const test::TemporaryFolder folder;
  const Report quiet = [](const std::string&) {};
  const auto bundle = writeBundle(folder, "Fake.bundle");
  const auto load = [&] { loadPlugin(openBundle(bundle, quiet), kMemoryModule); };
  EXPECT_NO_THROW(load());
  const auto modules = bundle + "/Contents/Linux";
  for (const auto& path : {bundle, modules}) {
    ASSERT_EQ(chmod(path.c_str(), 0777), 0);
    const auto failure = failureOf(load);
    EXPECT_EQ(failure.trouble(), Trouble::plugin);
    EXPECT_THAT(failure.what(), AllOf(HasSubstr(bundle), HasSubstr("everybody can write to " + path)));
    ASSERT_EQ(chmod(path.c_str(), 0755), 0);
  }
}

}  // namespace
}  // namespace tandemtrim::host
