#include "tests/support/recording/platform.hpp"

#include <algorithm>
#include <iterator>
#include <new>

#include "platform/log.hpp"

namespace tandemtrim::test {
namespace {

RecordingPlatformTest* running = nullptr;

// Logs when the nib's owner releases it.
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

RecordingMargin::RecordingMargin(const MarginOutlets& outlets, Log& log)
    : label(std::string(outlets.label), log),
      limitLabel(std::string(outlets.limitLabel), log),
      textBox(std::string(outlets.textBox), log),
      stepper(std::string(outlets.stepper), log) {}

RecordingNib::RecordingNib(Log& log)
    : tandemTrimValid("tandemTrimValid", log),
      labelDirection("labelDirection", log),
      labelPosition("labelPosition", log),
      directionPopUp("directionPopUp", log, 2),
      positionPopUp("positionPopUp", log, 3),
      defaultButton("defaultButton", log) {
  for (const auto& outlets : kMarginOutlets) margins.emplace_back(outlets, log);
}

std::vector<std::pair<std::string_view, platform::NibObject*>> RecordingNib::outlets() {
  std::vector<std::pair<std::string_view, platform::NibObject*>> all{
      {"labelDirection", &labelDirection},   {"labelPosition", &labelPosition},
      {"tandemTrimValid", &tandemTrimValid}, {"directionPopUp", &directionPopUp},
      {"positionPopUp", &positionPopUp},     {"defaultButton", &defaultButton},
      {"tandemTrimView", &tandemTrimView}};
  for (std::size_t side = 0; side < kSides; ++side) {
    const auto& names = kMarginOutlets.at(side);
    auto& margin = margins.at(side);
    all.insert(all.end(), {{names.label, &margin.label},
                           {names.limitLabel, &margin.limitLabel},
                           {names.textBox, &margin.textBox},
                           {names.stepper, &margin.stepper}});
  }
  return all;
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
