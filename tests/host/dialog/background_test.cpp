#include "host/dialog/asking/background.hpp"

#include <stdexcept>

#include <glibmm/main.h>
#include <gmock/gmock.h>
#include <pthread.h>

namespace tandemtrim::host {
namespace {

using testing::HasSubstr;

// Larger than any address space.
constexpr std::size_t kHugeStack = std::size_t{1} << 60U;

// Sets the default stack size of new threads until the end of the scope.
class StackSize {
 public:
  explicit StackSize(std::size_t size) {
    pthread_getattr_default_np(&before_);
    pthread_attr_t wanted = before_;
    pthread_attr_setstacksize(&wanted, size);
    pthread_setattr_default_np(&wanted);
  }
  StackSize(const StackSize&) = delete;
  StackSize& operator=(const StackSize&) = delete;
  ~StackSize() { pthread_setattr_default_np(&before_); }

 private:
  pthread_attr_t before_{};
};

class WorkInTheBackground : public testing::Test {
 protected:
  // A thread may still be ending after it has delivered its outcome.
  void SetUp() override {
    while (underWay > 0) std::this_thread::yield();
  }

  // Starts the work and runs the main loop until the outcome arrives.
  Outcome<int> outcomeOfWork(std::function<int()> work) {
    std::optional<Outcome<int>> outcome;
    inBackground<int>(listener_, std::move(work), [&](Outcome<int> done) { outcome = std::move(done); });
    while (!outcome) Glib::MainContext::get_default()->iteration(true);
    return *outcome;
  }

  std::shared_ptr<void> listener_ = std::make_shared<int>(0);
};

TEST_F(WorkInTheBackground, DeliversItsResultOnTheMainLoop) {
  const auto here = std::this_thread::get_id();
  const auto outcome = outcomeOfWork([here] { return std::this_thread::get_id() == here ? 1 : 2; });
  EXPECT_EQ(outcome.result, 2);
  EXPECT_FALSE(outcome.failure);
}

TEST_F(WorkInTheBackground, DeliversItsFailureUnchanged) {
  const auto outcome = outcomeOfWork([]() -> int { throw Failure(Trouble::stopped, "it is stopped"); });
  EXPECT_FALSE(outcome.result);
  ASSERT_TRUE(outcome.failure);
  EXPECT_EQ(outcome.failure->trouble(), Trouble::stopped);
}

TEST_F(WorkInTheBackground, DeliversAnyOtherExceptionAsAFailure) {
  const auto outcome = outcomeOfWork([]() -> int { throw std::runtime_error("no such thing"); });
  ASSERT_TRUE(outcome.failure);
  EXPECT_THAT(outcome.failure->what(), HasSubstr("no such thing"));
}

TEST_F(WorkInTheBackground, FailsIfTheSystemHasNoThreadForIt) {
  const StackSize huge(kHugeStack);
  const auto outcome = outcomeOfWork([] { return 1; });
  EXPECT_FALSE(outcome.result);
  EXPECT_TRUE(outcome.failure);
  EXPECT_EQ(underWay, 0);
}

TEST_F(WorkInTheBackground, DeliversNothingOnceItsListenerIsGone) {
  bool isCalled = false;
  inBackground<int>(
      std::exchange(listener_, nullptr), [] { return 1; }, [&](const auto&) { isCalled = true; });
  listener_ = std::make_shared<int>(0);
  while (underWay > 0) std::this_thread::yield();
  while (Glib::MainContext::get_default()->iteration(false)) continue;
  EXPECT_FALSE(isCalled);
}

}  // namespace
}  // namespace tandemtrim::host
