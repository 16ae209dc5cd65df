// Types into a margin box of the core: keystroke BUNDLE PPD
#include <string>

#include "adapters/memory/controls.hpp"
#include "adapters/shared/notification_center.hpp"
#include "bench/measured.hpp"
#include "bench/printer.hpp"
#include "view/view_controller.hpp"

namespace {

using namespace tandemtrim;

// A control in memory that counts how often its text is set.
template <class Control>
struct Counting : Control {
  void setStringValue(std::string_view text) override {
    ++writes;
    Control::setStringValue(text);
  }
  int writes = 0;
};

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 3) return 2;
  const bench::Job job(argv[2]);
  std::string reason;
  const auto info =
      MorvaTTCommonInfoKV2::initWithCallback(job.callback, platform::linux::Bundle::open(argv[1], reason));
  const auto controller = MorvaTTViewControllerKV2::initWithCommonInfo(info);
  if (!controller || controller->panelViewWithNibName("TandemTrim") == nullptr) return 1;

  // The last box takes the longest search.
  auto& box = dynamic_cast<platform::memory::TextBox&>(*controller->textBoxMarginRight());
  for (const char* text : {"", "5", "12", "007", "-1a2 mm", "999999999999999"}) {
    box.setStringValue(text);
    const bench::Measured measured("keystroke");
    platform::memory::notificationCenter().post(platform::NSControlTextDidChangeNotification, &box);
  }

  Counting<platform::memory::TextBox> countingBox;
  Counting<platform::memory::Stepper> countingStepper;
  controller->setTextBoxMarginRight(&countingBox);
  controller->setStepperMarginRight(&countingStepper);
  controller->TTVCInitializeTicket();
  controller->TTVCInitializeMargin();
  countingBox.platform::memory::TextBox::setStringValue("12");
  platform::memory::notificationCenter().post(platform::NSControlTextDidChangeNotification, &countingBox);
  std::printf("box\t%d\nstepper\t%d\n", countingBox.writes, countingStepper.writes);
}
