#pragma once

#include <string>
#include <vector>

namespace tandemtrim::host {

/// What a window says: a heading, and the sentences below it.
struct Message {
  std::string heading;
  std::vector<std::string> sentences = {};
};

/// The text as a message: its first line is the heading, the rest is one sentence. A first line that is too
/// long for a heading is repeated in full below.
Message messageOf(const std::string& text);

/// The sentences as one text, each in a line.
std::string linesOf(const Message& message);

}  // namespace tandemtrim::host
