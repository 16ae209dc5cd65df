// The input is the arguments of another program's requests, for a dialog and to print a document: three
// dictionaries in GLib's text form and a text, with "|||" between them. With any arguments, the options are
// those that the dialog's own tabs know, texts are short lines, and numbers are within their limits.
#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "fuzz/support/target.hpp"
#include "host/plain_text.hpp"
#include "host/portal/arguments.hpp"

namespace tandemtrim::fuzz {
namespace {

using namespace host;

constexpr std::string_view kBetweenDictionaries = "|||";
constexpr std::size_t kLongestLine = 255;
constexpr std::array<std::string_view, 9> kKnown{"copies",      "Collate",   "OutputOrder",
                                                 "page-set",    "number-up", "number-up-layout",
                                                 "page-ranges", "media",     "orientation-requested"};

using Dictionary = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

// The dictionary of a text, empty if the text is malformed.
Dictionary dictionary(const std::string& text) {
  auto* value = g_variant_parse(G_VARIANT_TYPE_VARDICT, text.c_str(), nullptr, nullptr, nullptr);
  if (value == nullptr) value = g_variant_ref_sink(g_variant_new("a{sv}", nullptr));
  return {value, g_variant_unref};
}

// Removes the part before the next mark from the input and returns it.
std::string nextPart(std::string_view& input) {
  const auto end = std::min(input.find(kBetweenDictionaries), input.size());
  std::string part(input.substr(0, end));
  input.remove_prefix(std::min(end + kBetweenDictionaries.size(), input.size()));
  return part;
}

void requireLine(const std::string& text, const std::string& name) {
  require(text.size() <= kLongestLine && plainText(text) == text, name + " is a short line");
}

void requireLimits(const DialogRequest& request) {
  for (const auto& [keyword, value] : request.options) {
    require(std::ranges::count(kKnown, keyword) != 0, "options are those of the dialog's tabs");
    requireLine(value, "an option's value");
  }
  requireLine(request.application, "the program's name");
  requireLine(request.title, "the title");
  requireLine(request.parent, "the parent's name");
  requireLine(request.acceptLabel, "the button's title");
  requireLine(request.document, "the document's name");
  require(request.document.find('/') == std::string::npos, "the document's name is no path");
  require(!request.scale || (*request.scale >= 1 && *request.scale <= 1000),
          "the scale is within its limits");
}

}  // namespace

void examine(std::string_view input) {
  const auto settings = dictionary(nextPart(input));
  const auto pageSetup = dictionary(nextPart(input));
  const auto options = dictionary(nextPart(input));
  const std::string rest(input);
  const Caller caller{rest, rest, rest};
  const auto prepared = prepareRequest(caller, settings.get(), pageSetup.get(), options.get());
  requireLimits(prepared);
  const auto printed = printRequest(caller, options.get());
  requireLimits(printed);
  require(printed.options.empty() && !printed.printer && !printed.scale && printed.document.empty(),
          "a request with a document suggests no options");
  require(printed.title == prepared.title && printed.acceptLabel == prepared.acceptLabel,
          "both methods read the same title and button");
  static_cast<void>(tokenIn(options.get()));
}

}  // namespace tandemtrim::fuzz
