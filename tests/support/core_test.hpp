#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "platform/object.hpp"
#include "plugin/setting_info/common_info.hpp"
#include "tests/support/fakes.hpp"

namespace tandemtrim::test {

inline platform::ObjectRef number(std::int64_t value) { return platform::makeObject(value); }

/// A test over the bundle, the printer and the job of a scene, which it may alter before it opens them.
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
  /// Common info of a derived class, in the same state.
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

/// Common info that lets so many tickets be made before it stops being ready.
class ReadyForSome : public MorvaTTCommonInfoKV2 {
 public:
  using MorvaTTCommonInfoKV2::initialize;
  [[nodiscard]] bool isReady() const override { return readyTimes-- > 0; }
  mutable int readyTimes = 0;
};

}  // namespace tandemtrim::test
