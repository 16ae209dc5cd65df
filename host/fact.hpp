#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// The English words of a fact, with placeholders such as "[name]": the key of its translations.
struct FactText {
  std::string_view words;
};

/// Marks such words in the source; the tests look for a translation of each.
consteval FactText operator""_fact(const char* words, std::size_t length) {
  return {std::string_view(words, length)};
}

struct FactArgument;

/// A statement for the user: a terminal shows it in English, a dialog in the user's language.
class Fact {
 public:
  /// A fact whose English words are the text with its arguments.
  Fact(FactText text, std::vector<FactArgument> arguments);
  /// A fact whose English words are more detailed than its translations.
  Fact(std::string english, FactText text, std::vector<FactArgument> arguments);
  /// Words from elsewhere, which every language quotes unchanged.
  explicit Fact(std::string words);

  [[nodiscard]] const std::string& english() const noexcept { return english_; }
  /// The words in another language; `translate` returns the translation of an English text.
  [[nodiscard]] std::string in(const std::function<std::string(std::string_view)>& translate) const;

 private:
  std::string english_;
  FactText text_;
  std::vector<FactArgument> arguments_;
};

/// The fact, followed by words from elsewhere in parentheses unless they are empty.
Fact withWords(Fact fact, const std::string& words);

/// The replacement of a placeholder: words that are the same in every language, or another fact.
struct FactArgument {
  FactArgument(std::string_view name, std::string words) : placeholder(name), same(std::move(words)) {}
  FactArgument(std::string_view name, Fact another) : placeholder(name), fact{std::move(another)} {}

  std::string_view placeholder;
  std::string same;
  /// At most one.
  std::vector<Fact> fact;
};

}  // namespace tandemtrim::host
