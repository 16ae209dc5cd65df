#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::host {

/// The two texts of progressText(), with placeholders.
inline constexpr const char* kSentOfText = "[name]: [percent] % of [size] MB sent";
inline constexpr const char* kSentText = "[name]: [sent] MB sent";

/// "report.pdf: 42 % of 180 MB sent", or "report.pdf: 75 MB sent" when the size is not known. `translate`
/// translates one of the texts above.
std::string progressText(
    const std::string& name, std::uint64_t sent, std::optional<std::uint64_t> size,
    const std::function<std::string(std::string_view)>& translate = [](auto text) {
      return std::string(text);
    });

}  // namespace tandemtrim::host
