#pragma once

#include <deque>
#include <string>

namespace tandemtrim::fuzz {

/// Has the one print server of this process, at the place that it gives, answer the next requests so, in
/// their order. Each answer begins with the number of its status, among a few; no answer follows the last.
std::string serveAnswers(std::deque<std::string> answers);

}  // namespace tandemtrim::fuzz
