#include <algorithm>
#include <utility>

#include "tests/model/manager_test.hpp"
#include "tests/support/heap.hpp"

namespace tandemtrim::test {
namespace {

// The addresses to watch, and the watched addresses that were released, in order.
struct Watch {
  std::array<const void*, 7> watched{};
  std::array<const void*, 7> released{};
  std::size_t count = 0;
} watch;

void noteRelease(const void* address) {
  const auto& watched = watch.watched;
  if (std::find(watched.begin(), watched.end(), address) != watched.end())
    watch.released.at(watch.count++) = address;
}

class ReleaseOrder : public CoreTest {};

TEST_F(ReleaseOrder, OfTheManagersTicketsIsTheOrderOfItsFields) {
  auto manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(makeCommonInfo());
  std::ranges::copy(ticketsOf(*manager), watch.watched.begin());
  heap().onRelease = noteRelease;
  manager.reset();
  heap().onRelease = nullptr;
  EXPECT_EQ(watch.count, 7U);
  EXPECT_EQ(watch.released, watch.watched);
}

}  // namespace
}  // namespace tandemtrim::test
