#include "host/dialog/settings/queue_defaults.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace tandemtrim::host {
namespace {

// The values that a queue uses unless the job or the administrator sets others.
constexpr std::array<std::pair<const char*, const char*>, 6> kQueueDefaults{{{"copies", "1"},
                                                                             {"number-up", "1"},
                                                                             {"number-up-layout", "lrtb"},
                                                                             {"orientation-requested", "3"},
                                                                             {"OutputOrder", "Normal"},
                                                                             {"page-set", "all"}}};

// Whether this option of a job decides what the other one would set.
bool overrides(const Option& option, const Option& other) {
  const bool setsOrientation = isSameKeyword(option.keyword, "orientation-requested");
  return isSameKeyword(option.keyword, other.keyword)
             ? option.value != other.value
             : setsOrientation && isSameKeyword(other.keyword, "landscape");
}

// Whether a job without the option has this value.
bool isQueueDefault(const Option& option, const Options& defaults) {
  return std::ranges::any_of(kQueueDefaults, [&](const auto& standard) {
    if (!isSameKeyword(option.keyword, standard.first) || option.value != standard.second) return false;
    return std::ranges::none_of(defaults, [&](const Option& other) { return overrides(option, other); });
  });
}

}  // namespace

Options withoutQueueDefaults(Options options, const Options& defaults) {
  std::erase_if(options, [&](const Option& option) { return isQueueDefault(option, defaults); });
  return options;
}

}  // namespace tandemtrim::host
