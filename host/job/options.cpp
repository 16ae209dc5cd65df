#include "host/job/options.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <span>
#include <string_view>

#include <strings.h>

#include "host/failure.hpp"
#include "host/job/option_syntax.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

// The longest value that the printing protocol carries.
constexpr std::size_t kLongestValue = 32767;
// The longest title of a job that it carries.
constexpr std::size_t kLongestTitle = 255;

// The options that concern a single job: its title, which of its pages are printed, how often and when.
constexpr std::array<const char*, 8> kOfOneJob{
    "copies",      "Collate",  "sheet-collate",  "multiple-document-handling",
    "page-ranges", "page-set", "job-hold-until", "job-name"};

// Why CUPS would lose this value, or nullopt.
std::optional<std::string> loss(const std::string& value) {
  if (value.starts_with('{')) return "begins with a brace, so CUPS would read it as a collection of options";
  if (value.find('\r') != std::string::npos) return "contains a carriage return, where CUPS would cut it off";
  if (value.size() > kLongestValue) {
    return "is " + std::to_string(value.size()) + " bytes long, and CUPS accepts " +
           std::to_string(kLongestValue) + " at most";
  }
  return std::nullopt;
}

bool isPlain(std::string_view text) {
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.,:+@%/=-";
  return !text.empty() && text.find_first_not_of(plain) == std::string_view::npos;
}

// The text in the shell's quotes with escapes; bytes that a terminal cannot show become octal numbers.
std::string ansiWord(const std::string& text) {
  std::string escaped;
  for (const char character : text) {
    if (character == '\'' || character == '\\') escaped += '\\';
    escaped += character;
  }
  return "$'" +
         withoutControls(escaped,
                         [](std::string_view bytes) {
                           std::string octal;
                           for (const char byte : bytes) {
                             const auto value = static_cast<unsigned char>(byte);
                             octal += '\\';
                             for (const int shift : {6, 3, 0})
                               octal += static_cast<char>('0' + ((value >> shift) & 7));
                           }
                           return octal;
                         }) +
         "'";
}

}  // namespace

Options readOptions(const std::string& text) { return readOptions(std::span(&text, 1)); }

Options readOptions(std::span<const std::string> texts) {
  cups_option_t* parsed = nullptr;
  int count = 0;
  errno = 0;
  for (const auto& text : texts) count = cupsParseOptions(text.c_str(), count, &parsed);
  // Some of the options may then be missing, which libcups does not report.
  const bool ranOutOfMemory = errno == ENOMEM;
  Options options;
  for (int i = 0; i < count && !ranOutOfMemory; ++i) options.push_back({parsed[i].name, parsed[i].value});
  cupsFreeOptions(count, parsed);
  if (ranOutOfMemory) throw std::bad_alloc();
  return options;
}

Options parseOptions(const std::string& text) {
  if (const auto mistake = optionSyntaxMistake(text)) {
    throw Failure("-o \"" + shortText(text) + "\": " + *mistake +
                      "; write keyword=value, with quotes around a value that contains blanks",
                  kWrongCommandLine);
  }
  return readOptions(text);
}

bool isSameKeyword(const std::string& one, const std::string& other) {
  return strcasecmp(one.c_str(), other.c_str()) == 0;
}

void setOption(Options& options, Option option) {
  const auto earlier = std::find_if(options.begin(), options.end(), [&](const Option& known) {
    return isSameKeyword(known.keyword, option.keyword);
  });
  if (earlier == options.end()) {
    options.push_back(std::move(option));
  } else {
    *earlier = std::move(option);
  }
}

Options withoutKeywords(Options options, const std::vector<std::string>& keywords) {
  std::erase_if(options, [&](const Option& option) {
    return std::ranges::any_of(keywords,
                               [&](const auto& keyword) { return isSameKeyword(keyword, option.keyword); });
  });
  return options;
}

std::vector<std::string> keywordsOf(const Options& options) {
  std::vector<std::string> keywords;
  for (const auto& option : options) keywords.push_back(option.keyword);
  return keywords;
}

Options withoutThoseOfOneJob(Options options) {
  std::erase_if(options, [](const Option& option) { return option.keyword.starts_with("notify-"); });
  return withoutKeywords(std::move(options), {kOfOneJob.begin(), kOfOneJob.end()});
}

std::string optionText(const Option& option) {
  if (isPlain(option.value)) return option.keyword + "=" + option.value;
  std::string text = option.keyword + "=\"";
  for (const char character : option.value) {
    if (character == '"' || character == '\\') text += '\\';
    text += character;
  }
  return text + '"';
}

std::string shellWord(const std::string& text) {
  if (isPlain(text)) return text;
  if (plainText(text) != text) return ansiWord(text);
  std::string word = "'";
  for (const char character : text) {
    if (character == '\'') {
      word += "'\\''";
    } else {
      word += character;
    }
  }
  return word + "'";
}

void refuseLossyValues(const Options& options) {
  for (const auto& [keyword, value] : options) {
    if (const auto reason = loss(value)) {
      throw Failure(Trouble::other,
                    Fact("the value of " + keyword + " " + *reason, kUnsendable,
                         {{"[option]", keyword}, {"[value]", shortText(value)}}),
                    "; nothing was sent. Give another value with -o " + keyword + "=...");
    }
  }
}

void refuseLossyTitle(const std::string& title) {
  const bool hasControl = std::ranges::any_of(title, [](char character) {
    return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
  });
  if (!hasControl && title.size() <= kLongestTitle) return;
  const std::string fault = hasControl ? "contains a control character"
                                       : "is longer than " + std::to_string(kLongestTitle) + " bytes";
  throw Failure(Trouble::other,
                Fact("the title " + fault + ", and CUPS would print \"Untitled\" instead",
                     "the job's title contains a control character, or is longer than [size] bytes"_fact,
                     {{"[size]", std::to_string(kLongestTitle)}}),
                "; nothing was sent. Give another with -t");
}

OptionList::OptionList(const Options& options) {
  for (const auto& [keyword, value] : options) {
    count_ = cupsAddOption(keyword.c_str(), value.c_str(), count_, &options_);
    // Out of memory, libcups drops the list, or keeps an option without its name or value.
    const bool isWhole =
        count_ > 0 && std::ranges::all_of(std::span(options_, static_cast<std::size_t>(count_)),
                                          [](const cups_option_t& option) {
                                            return option.name != nullptr && option.value != nullptr;
                                          });
    if (!isWhole) {
      cupsFreeOptions(count_, options_);
      throw std::bad_alloc();
    }
  }
}

}  // namespace tandemtrim::host
