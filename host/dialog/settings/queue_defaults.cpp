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

// Whether the server uses this value for a job without the option.
bool isQueueDefault(const Option& option, const Options& serverDefaults) {
  return std::ranges::any_of(kQueueDefaults, [&](const auto& standard) {
    if (!isSameKeyword(option.keyword, standard.first) || option.value != standard.second) return false;
    return std::ranges::none_of(serverDefaults, [&](const Option& serverDefault) {
      return isSameKeyword(serverDefault.keyword, standard.first) && serverDefault.value != standard.second;
    });
  });
}

}  // namespace

Options withoutQueueDefaults(Options options, const Options& serverDefaults) {
  std::erase_if(options, [&](const Option& option) { return isQueueDefault(option, serverDefaults); });
  return options;
}

}  // namespace tandemtrim::host
