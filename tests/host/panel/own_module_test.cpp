#include "host/panel/own_module.hpp"

#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

// A file beside this program, removed after the test.
class AFileBesideTheProgram : public testing::Test {
 protected:
  AFileBesideTheProgram() { fs::copy_file(FAKE_MODULE, path, fs::copy_options::overwrite_existing); }
  ~AFileBesideTheProgram() override { fs::remove(path); }

  const std::string name = "own-module-test";
  const fs::path path = fs::read_symlink("/proc/self/exe").parent_path() / name;
};

TEST_F(AFileBesideTheProgram, IsFoundByItsName) {
  EXPECT_EQ(fs::path(findOwnProgram(name).path), path);
  EXPECT_THAT(findOwnProgram("missing").path, IsEmpty());
  EXPECT_THAT(findOwnProgram("missing").fault, IsEmpty());
}

TEST_F(AFileBesideTheProgram, IsNeitherRunNorLoadedIfOthersMayChangeIt) {
  ASSERT_EQ(chmod(path.c_str(), 0777), 0);
  EXPECT_THAT(findOwnProgram(name).path, IsEmpty());
  EXPECT_THAT(findOwnProgram(name).fault, HasSubstr("everybody can write to " + path.string()));
  const auto module = loadOwnModule(name);
  EXPECT_EQ(module.handle, nullptr);
  EXPECT_THAT(module.fault, HasSubstr("everybody can write to " + path.string()));
}

TEST_F(AFileBesideTheProgram, IsNotLoadedWithoutTheMarkOfTheBuild) {
  const auto module = loadOwnModule(name);
  EXPECT_EQ(module.handle, nullptr);
  EXPECT_THAT(module.fault, HasSubstr("is from another build"));
}

}  // namespace
}  // namespace tandemtrim::host
