#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/nib.hpp"
#include "platform/notifications.hpp"
#include "tests/support/core_test.hpp"
#include "tests/support/recording/controls.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::test {

/// The controls of one margin.
struct RecordingMargin {
  RecordingMargin(const MarginOutlets& outlets, Log& log);

  RecordingLabel label, limitLabel;
  RecordingTextBox textBox;
  RecordingStepper stepper;
};

/// The objects of the nib "TandemTrim", named as their outlets.
struct RecordingNib {
  explicit RecordingNib(Log& log);

  RecordingCheckBox tandemTrimValid;
  RecordingLabel labelDirection, labelPosition;
  std::vector<RecordingMargin> margins;
  RecordingPopUp directionPopUp, positionPopUp;
  RecordingButton defaultButton;
  platform::View tandemTrimView;

  [[nodiscard]] std::vector<std::pair<std::string_view, platform::NibObject*>> outlets();
};

/// A notification centre that records subscriptions and refuses them on request.
class RecordingCenter : public platform::NotificationCenter {
 public:
  struct Subscription {
    const void* observer;
    Selector selector;
    std::string_view name;
    platform::NibObject* object;
  };

  explicit RecordingCenter(Log& log) : log_(log) {}
  void addObserver(const void* observer, Selector selector, std::string_view name,
                   platform::NibObject* object) override;
  void removeObserver(const void* observer) override;
  void removeObserver(const void* observer, std::string_view name, platform::NibObject* object) override;

  std::vector<Subscription> subscriptions;
  /// How many subscriptions succeed before one throws std::bad_alloc; nullopt for no limit.
  std::optional<std::size_t> capacity;
  std::function<void()> onRemove;

 private:
  Log& log_;
};

/// A test on the recording platform: `nib`, `center` and `log` serve the core's calls of the platform.
class RecordingPlatformTest : public CoreTest {
 public:
  ~RecordingPlatformTest() override;

  Log log;
  RecordingNib nib{log};
  std::set<std::string_view> missingOutlets;
  RecordingCenter center{log};

 protected:
  RecordingPlatformTest();
};

}  // namespace tandemtrim::test
