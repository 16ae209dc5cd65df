#include <algorithm>
#include <cstdlib>
#include <new>

#include "tests/model/manager_test.hpp"

namespace {

// The addresses to watch, and those of them that were released, in order.
struct Watch {
  std::array<const void*, 7> watched{};
  std::array<const void*, 7> released{};
  std::size_t count = 0;
};
Watch watch;

void release(void* address) noexcept {
  const auto& watched = watch.watched;
  if (address != nullptr && std::find(watched.begin(), watched.end(), address) != watched.end())
    watch.released.at(watch.count++) = address;
  std::free(address);
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* address = std::malloc(size == 0 ? 1 : size)) return address;
  throw std::bad_alloc();
}
void operator delete(void* address) noexcept { release(address); }
void operator delete(void* address, std::size_t) noexcept { release(address); }

namespace tandemtrim::test {
namespace {

class ReleaseOrder : public CoreTest {};

TEST_F(ReleaseOrder, OfTheManagersTicketsIsThatOfItsFields) {
  auto manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(makeCommonInfo());
  const auto tickets = ticketsOf(*manager);
  std::copy(tickets.begin(), tickets.end(), watch.watched.begin());
  manager.reset();
  const auto expected = std::exchange(watch.watched, {});
  EXPECT_EQ(watch.count, 7U);
  EXPECT_EQ(watch.released, expected);
}

}  // namespace
}  // namespace tandemtrim::test
