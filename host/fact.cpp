#include "host/fact.hpp"

#include <utility>

#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

template <class Words>
std::string filledWith(const std::vector<FactArgument>& arguments, std::string_view text, Words wordsOf) {
  std::vector<std::string> words;
  words.reserve(arguments.size());
  for (const auto& [placeholder, same, fact] : arguments)
    words.push_back(fact.empty() ? same : wordsOf(fact.front()));
  std::vector<Filling> fillings;
  fillings.reserve(words.size());
  for (std::size_t index = 0; index < words.size(); ++index)
    fillings.emplace_back(arguments[index].placeholder, words[index]);
  return filled(text, fillings);
}

}  // namespace

Fact::Fact(FactText text, std::vector<FactArgument> arguments)
    : english_(filledWith(arguments, text.words, [](const Fact& fact) { return fact.english(); })),
      text_(text),
      arguments_(std::move(arguments)) {}

Fact::Fact(std::string english, FactText text, std::vector<FactArgument> arguments)
    : english_(std::move(english)), text_(text), arguments_(std::move(arguments)) {}

Fact::Fact(std::string words) : Fact("[words]"_fact, {{"[words]", std::move(words)}}) {}

std::string Fact::in(const std::function<std::string(std::string_view)>& translate) const {
  return filledWith(arguments_, translate(text_.words), [&](const Fact& fact) { return fact.in(translate); });
}

Fact withWords(Fact fact, const std::string& words) {
  if (words.empty()) return fact;
  return {"[fact] ([words])"_fact, {{"[fact]", std::move(fact)}, {"[words]", words}}};
}

}  // namespace tandemtrim::host
