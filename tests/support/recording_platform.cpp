#include "tests/support/recording_platform.hpp"

#include <algorithm>
#include <iterator>
#include <new>

#include "platform/log.hpp"

namespace tandemtrim::test {
namespace {

RecordingPlatformTest* running = nullptr;

// Writes down when the owner of the nib lets go of it.
class RecordedNib : public platform::LoadedNib {
 public:
  explicit RecordedNib(Log& log) : log_(log) {}
  ~RecordedNib() override { log_.emplace_back("nib released"); }
  RecordedNib(const RecordedNib&) = delete;
  RecordedNib& operator=(const RecordedNib&) = delete;

 private:
  Log& log_;
};

}  // namespace

RecordingNib::RecordingNib(Log& log)
    : tandemTrimValid("tandemTrimValid", log),
      labelDirection("labelDirection", log),
      labelPosition("labelPosition", log),
      labelMarginTop("labelMarginTop", log),
      labelMarginBottom("labelMarginBottom", log),
      labelMarginLeft("labelMarginLeft", log),
      labelMarginRight("labelMarginRight", log),
      labelMarginLimitTop("labelMarginLimitTop", log),
      labelMarginLimitBottom("labelMarginLimitBottom", log),
      labelMarginLimitLeft("labelMarginLimitLeft", log),
      labelMarginLimitRight("labelMarginLimitRight", log),
      textBoxMarginTop("textBoxMarginTop", log),
      textBoxMarginBottom("textBoxMarginBottom", log),
      textBoxMarginLeft("textBoxMarginLeft", log),
      textBoxMarginRight("textBoxMarginRight", log),
      stepperMarginTop("stepperMarginTop", log),
      stepperMarginBottom("stepperMarginBottom", log),
      stepperMarginLeft("stepperMarginLeft", log),
      stepperMarginRight("stepperMarginRight", log),
      directionPopUp("directionPopUp", log, 2),
      positionPopUp("positionPopUp", log, 3),
      defaultButton("defaultButton", log) {}

std::array<std::pair<std::string_view, platform::NibObject*>, 23> RecordingNib::outlets() {
  return {{{"labelDirection", &labelDirection},
           {"labelPosition", &labelPosition},
           {"labelMarginTop", &labelMarginTop},
           {"labelMarginBottom", &labelMarginBottom},
           {"labelMarginLeft", &labelMarginLeft},
           {"labelMarginRight", &labelMarginRight},
           {"labelMarginLimitTop", &labelMarginLimitTop},
           {"labelMarginLimitBottom", &labelMarginLimitBottom},
           {"labelMarginLimitLeft", &labelMarginLimitLeft},
           {"labelMarginLimitRight", &labelMarginLimitRight},
           {"textBoxMarginTop", &textBoxMarginTop},
           {"textBoxMarginBottom", &textBoxMarginBottom},
           {"textBoxMarginLeft", &textBoxMarginLeft},
           {"textBoxMarginRight", &textBoxMarginRight},
           {"stepperMarginTop", &stepperMarginTop},
           {"stepperMarginBottom", &stepperMarginBottom},
           {"stepperMarginLeft", &stepperMarginLeft},
           {"stepperMarginRight", &stepperMarginRight},
           {"tandemTrimValid", &tandemTrimValid},
           {"directionPopUp", &directionPopUp},
           {"positionPopUp", &positionPopUp},
           {"defaultButton", &defaultButton},
           {"tandemTrimView", &tandemTrimView}}};
}

void RecordingCenter::addObserver(const void* observer, Selector selector, std::string_view name,
                                  platform::NibObject* object) {
  if (capacity && subscriptions.size() >= *capacity) throw std::bad_alloc();
  subscriptions.push_back({observer, std::move(selector), name, object});
  const auto* box = dynamic_cast<RecordingTextBox*>(object);
  log_.push_back("subscribe " + (box == nullptr ? "?" : box->identifier()));
}

void RecordingCenter::removeObserver(const void* observer) {
  std::erase_if(subscriptions, [&](const auto& subscription) { return subscription.observer == observer; });
  log_.emplace_back("unsubscribe");
  if (onRemove) onRemove();
}

void RecordingCenter::removeObserver(const void* observer, std::string_view name,
                                     platform::NibObject* object) {
  const auto latest =
      std::find_if(subscriptions.rbegin(), subscriptions.rend(), [&](const auto& subscription) {
        return subscription.observer == observer && subscription.name == name &&
               subscription.object == object;
      });
  ASSERT_NE(latest, subscriptions.rend());
  subscriptions.erase(std::next(latest).base());
}

RecordingPlatformTest::RecordingPlatformTest() { running = this; }
RecordingPlatformTest::~RecordingPlatformTest() { running = nullptr; }

}  // namespace tandemtrim::test

namespace tandemtrim::platform {

bool loadNibNamed(std::string_view name, NibOwner& owner) {
  auto& running = *test::running;
  running.log.push_back("load " + std::string(name));
  owner.keepLoadedNib(std::make_unique<test::RecordedNib>(running.log));
  for (const auto& [outlet, object] : running.nib.outlets()) {
    if (!running.missingOutlets.contains(outlet)) owner.setOutlet(outlet, object);
  }
  return true;
}

NotificationCenter& defaultCenter() { return test::running->center; }

void NSLog(std::string_view format, std::span<const std::string> list) {
  std::string line(format);
  for (const auto& item : list) line += ' ' + item;
  test::running->log.push_back(line);
}

}  // namespace tandemtrim::platform
