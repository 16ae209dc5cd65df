#include <memory>

#include <dlfcn.h>

#include "tests/support/core_test.hpp"

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
  ASSERT_NE(makePlugin(), nullptr) << dlerror();
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

TEST_F(Module, MakesAnotherPlugInEachTime) {
  std::unique_ptr<platform::Plugin> first;
  std::unique_ptr<platform::Plugin> second;
  makePlugin()(first);
  makePlugin()(second);
  EXPECT_NE(first, second);
}

}  // namespace
}  // namespace tandemtrim::test
