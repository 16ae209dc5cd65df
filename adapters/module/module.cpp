#include <memory>
#include <new>

#include "adapters/module/plugin.hpp"
#include "platform/extension.hpp"

#define TANDEM_TRIM_EXPORT __attribute__((visibility("default")))

extern "C" {

// Named as NSPrincipalClass in the bundle's Info.plist.
TANDEM_TRIM_EXPORT void MorvaTTPdePluginKV2(std::unique_ptr<tandemtrim::platform::Plugin>& made) noexcept;

void MorvaTTPdePluginKV2(std::unique_ptr<tandemtrim::platform::Plugin>& made) noexcept {
  try {
    made = tandemtrim::platform::makePlugin();
  } catch (const std::bad_alloc&) {
    made.reset();
  }
}
}
