#include <cstdlib>
#include <memory>
#include <new>

#include <dlfcn.h>

#include "tests/support/core_test.hpp"

namespace {

bool memoryIsGone = false;

}  // namespace

// The module allocates by them too.
void* operator new(std::size_t size) {
  void* address = memoryIsGone ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (address == nullptr) throw std::bad_alloc();
  return address;
}
void operator delete(void* address) noexcept { std::free(address); }
void operator delete(void* address, std::size_t) noexcept { std::free(address); }

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

TEST_F(Module, MakesAnotherPlugInEachTime) {
  std::unique_ptr<platform::Plugin> first;
  std::unique_ptr<platform::Plugin> second;
  makePlugin()(first);
  makePlugin()(second);
  EXPECT_NE(first, second);
}

TEST_F(Module, MakesNoPlugInWithoutMemoryAndTakesTheOldOneAway) {
  const auto make = makePlugin();
  std::unique_ptr<platform::Plugin> plugin;
  make(plugin);
  memoryIsGone = true;
  make(plugin);
  memoryIsGone = false;
  EXPECT_EQ(plugin, nullptr);
}

}  // namespace
}  // namespace tandemtrim::test
