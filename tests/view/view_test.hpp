#pragma once

#include <string>

#include "tests/support/recording/platform.hpp"
#include "view/view_controller.hpp"

namespace tandemtrim::test {

/// A test of a view controller on controls that record their calls.
class ViewTest : public RecordingPlatformTest {
 protected:
  void makeController() {
    info = makeCommonInfo();
    controller = MorvaTTViewControllerKV2::initWithCommonInfo(info);
    forget();
  }
  /// Makes the controller and loads its view.
  void loadView() {
    makeController();
    ASSERT_EQ(controller->panelViewWithNibName("TandemTrim"), &nib.tandemTrimView);
  }
  /// Connects the outlets of the nib by hand, so that single steps of the set-up can be run.
  void connectOutlets() {
    makeController();
    for (const auto& [outlet, object] : nib.outlets()) controller->setOutlet(outlet, object);
  }
  /// Clears all logs.
  void forget() {
    log.clear();
    settings().log.clear();
    bundle->log.clear();
  }

  std::shared_ptr<MorvaTTCommonInfoKV2> info;
  std::unique_ptr<MorvaTTViewControllerKV2> controller;
};

}  // namespace tandemtrim::test
