#include "adapters/gtk/controls/type_ahead.hpp"

#include <algorithm>

#include <glibmm/ustring.h>

namespace tandemtrim::platform::gtk {
namespace {

constexpr std::uint32_t kPause = 1000;

bool beginsWith(const std::string& title, const Glib::ustring& beginning) {
  const auto folded = Glib::ustring(title).make_valid().casefold();
  return folded.compare(0, beginning.size(), beginning) == 0;
}

}  // namespace

std::optional<std::size_t> TypeAhead::type(char32_t letter, std::uint32_t time,
                                           const std::vector<std::string>& titles,
                                           std::optional<std::size_t> current) {
  if (time - last_ > kPause) typed_.clear();
  last_ = time;
  typed_ += letter;
  const bool isRepeated =
      std::ranges::all_of(typed_, [&](char32_t typed) { return typed == typed_.front(); });
  Glib::ustring beginning;
  for (const auto typed : isRepeated ? typed_.substr(0, 1) : typed_)
    beginning += static_cast<gunichar>(typed);
  beginning = beginning.casefold();

  // A longer beginning may still match the current item.
  const auto first = current ? *current + (isRepeated ? 1 : 0) : 0;
  for (std::size_t step = 0; step < titles.size(); ++step) {
    const auto index = (first + step) % titles.size();
    if (beginsWith(titles[index], beginning)) return index;
  }
  return std::nullopt;
}

}  // namespace tandemtrim::platform::gtk
