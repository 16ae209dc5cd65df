#include "view/decimal_formatter.hpp"
#include "view/margin_entry.hpp"

int main() {
  using namespace tandemtrim;
  platform::ObjectRef typed;
  MorvaTTDecimalFormatterKV2().getObjectValue(typed, margin_entry::digitString("-1a2 mm"), nullptr);
  const platform::Object least(std::int64_t{0});
  const platform::Object most(std::int64_t{10});
  const auto* accepted = platform::heldBetween<const platform::Object*>(typed.get(), &least, &most);
  return accepted == &most && margin_entry::ticketName("Top") == "Top" ? 0 : 1;
}
