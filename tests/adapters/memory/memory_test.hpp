#pragma once

#include <memory>

#include "adapters/memory/nib.hpp"
#include "adapters/memory/panel.hpp"
#include "adapters/shared/notification_center.hpp"
#include "tests/support/core_test.hpp"
#include "view/view_controller.hpp"

namespace tandemtrim::test {

/// A test of a view controller with the memory platform's nib, which `description` may change.
class MemoryTest : public CoreTest {
 protected:
  ~MemoryTest() override { description = {}; }

  void makeController() {
    info = makeCommonInfo();
    controller = MorvaTTViewControllerKV2::initWithCommonInfo(info);
    ASSERT_NE(controller, nullptr);
  }
  platform::View* loadView() { return controller->panelViewWithNibName("TandemTrim"); }
  /// Shows the panel with the function switched on.
  void showOn() {
    scene.stored["MVTandemTrim"] = "On";
    ASSERT_NO_FATAL_FAILURE(makeController());
    view = dynamic_cast<platform::memory::Panel*>(loadView());
    ASSERT_NE(view, nullptr);
    controller->restoreNonPPDSettingsFromPrintSettings();
    controller->updateView();
  }
  static std::size_t subscriptions() { return platform::memory::notificationCenter().subscriptionCount(); }

  platform::memory::NibDescription& description = platform::memory::nibDescription();
  std::shared_ptr<MorvaTTCommonInfoKV2> info;
  std::unique_ptr<MorvaTTViewControllerKV2> controller;
  platform::memory::Panel* view = nullptr;
};

}  // namespace tandemtrim::test
