#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tandemtrim::host {

/// A text's placeholder, such as "[name]", and its replacement.
using Filling = std::pair<std::string_view, std::string_view>;

/// The text with its placeholders replaced. Placeholders within a replacement stay as they are.
std::string filled(std::string_view text, std::span<const Filling> fillings);
inline std::string filled(std::string_view text, std::initializer_list<Filling> fillings) {
  return filled(text, std::span(fillings.begin(), fillings.end()));
}

}  // namespace tandemtrim::host
