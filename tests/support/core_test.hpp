#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "platform/object.hpp"
#include "plugin/setting_info/common_info.hpp"
#include "tests/support/fakes.hpp"

namespace tandemtrim::test {

inline platform::ObjectRef number(std::int64_t value) { return platform::makeObject(value); }

/// A test with the bundle, printer and job of a scene. It may alter the scene before it opens the job.
class CoreTest : public testing::Test {
 protected:
  void openJob() {
    bundle = std::make_shared<FakeBundle>(scene);
    callback = std::make_shared<FakeCallback>(scene);
  }

  [[nodiscard]] std::shared_ptr<MorvaTTCommonInfoKV2> makeCommonInfo() {
    openJob();
    return MorvaTTCommonInfoKV2::initWithCallback(callback, bundle);
  }
  /// Makes common info of a derived class; null when `initialize` fails.
  template <class Class>
  [[nodiscard]] std::shared_ptr<Class> makeCommonInfoOf() {
    openJob();
    auto made = std::make_shared<Class>();
    return made->initialize(callback, bundle) ? made : nullptr;
  }

  [[nodiscard]] FakePrintSettings& settings() { return callback->settings; }

  Scene scene;
  std::shared_ptr<FakeBundle> bundle;
  std::shared_ptr<FakeCallback> callback;
};

/// Common info that is ready `readyTimes` times, so that a test can choose which ticket fails.
class ReadyForSome : public MorvaTTCommonInfoKV2 {
 public:
  using MorvaTTCommonInfoKV2::initialize;
  [[nodiscard]] bool isReady() const override { return readyTimes-- > 0; }
  mutable int readyTimes = 0;
};

}  // namespace tandemtrim::test
