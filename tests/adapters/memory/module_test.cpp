#include <memory>

#include <dlfcn.h>
#include <syslog.h>

#include "tests/support/core_test.hpp"
#include "tests/support/heap.hpp"

namespace tandemtrim::test {
namespace {

using platform::kPrintDialogExtensionType;

// The module as a host loads it.
class Module : public CoreTest {
 protected:
  Module() : handle_(dlopen(MODULE, RTLD_NOW | RTLD_LOCAL)) {}

  [[nodiscard]] platform::MakePlugin makePlugin() const {
    return reinterpret_cast<platform::MakePlugin>(dlsym(handle_.get(), "MorvaTTPdePluginKV2"));
  }

 private:
  struct Close {
    void operator()(void* handle) const { dlclose(handle); }
  };
  std::unique_ptr<void, Close> handle_;
};

TEST_F(Module, MakesAPlugInThatMakesAPanel) {
  ASSERT_NE(makePlugin(), nullptr);
  std::unique_ptr<platform::Plugin> plugin;
  makePlugin()(plugin);
  ASSERT_NE(plugin, nullptr);
  openJob();
  EXPECT_TRUE(plugin->initWithBundle(bundle));
  const auto panels = plugin->PDEPanelsForType(kPrintDialogExtensionType, callback);
  ASSERT_NE(panels, nullptr);
  EXPECT_NE(panels->front()->panelView(), nullptr);
  EXPECT_EQ(settings().values.size(), 7U);
}

TEST_F(Module, WritesItsKeywordsToTheSystemLogOnEachRequest) {
  std::unique_ptr<platform::Plugin> plugin;
  makePlugin()(plugin);
  openJob();
  plugin->initWithBundle(bundle);
  const auto panels = plugin->PDEPanelsForType(kPrintDialogExtensionType, callback);
  openlog("module", LOG_PERROR, LOG_USER);
  testing::internal::CaptureStderr();
  const auto& first = panels->front()->supportedPPDOptionKeys();
  const auto& second = panels->front()->supportedPPDOptionKeys();
  closelog();
  const std::string line =
      "module: supportedPPDOptionKeys:=NSArray((MVTandemTrim, MVImageDirectionPriority, MVPrintPosition, "
      "MVTopMargin, MVBottomMargin, MVLeftMargin, MVRightMargin))\n";
  EXPECT_EQ(testing::internal::GetCapturedStderr(), line + line);
  EXPECT_EQ(&first, &second);
}

TEST_F(Module, MakesAnotherPlugInEachTime) {
  std::unique_ptr<platform::Plugin> first;
  std::unique_ptr<platform::Plugin> second;
  makePlugin()(first);
  makePlugin()(second);
  EXPECT_NE(first, second);
}

TEST_F(Module, MakesNoPlugInWithoutMemoryAndRemovesTheOldOne) {
  const auto make = makePlugin();
  std::unique_ptr<platform::Plugin> plugin;
  make(plugin);
  heap().isExhausted = true;
  make(plugin);
  heap().isExhausted = false;
  EXPECT_EQ(plugin, nullptr);
}

}  // namespace
}  // namespace tandemtrim::test
