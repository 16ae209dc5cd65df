#pragma once

#include <deque>
#include <string>

namespace tandemtrim::fuzz {

/// Makes the print server of this process answer the next requests with these answers, in their order, and
/// returns its address. An answer's first byte selects one of a few statuses. After the last answer the
/// server closes its connections.
std::string serveAnswers(std::deque<std::string> answers);

}  // namespace tandemtrim::fuzz
