#include "host/dialog/texts.hpp"

#include <algorithm>
#include <filesystem>

#include <dlfcn.h>

#include "host/filled_text.hpp"
#include "host/legality.hpp"
#include "host/plain_text.hpp"
#include "platform/linux/bundle.hpp"

namespace tandemtrim::host {
namespace {

using platform::memory::ControlKind;
using platform::memory::ControlState;

// Beside the module that this code is part of.
std::string bundlePath() {
  Dl_info module{};
  if (dladdr(reinterpret_cast<const void*>(&bundlePath), &module) == 0) return {};
  return std::filesystem::absolute(module.dli_fname).parent_path() / "Dialog.bundle";
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator) {
  std::string whole;
  for (const auto& part : parts) whole.append(&part == &parts.front() ? "" : separator).append(part);
  return whole;
}

// The values to choose from as the panel shows them, or a number's limits.
std::string allowedText(const ControlState& control) {
  if (control.kind == ControlKind::textBox) {
    return filled(localized(kRangeText),
                  {{"[min]", decimalText(control.min)}, {"[max]", decimalText(control.max)}});
  }
  std::vector<std::string> titles;
  if (control.kind == ControlKind::checkBox) titles = {localized(kOnText), localized(kOffText)};
  for (const auto& choice : control.choices) {
    if (choice.value) titles.push_back(choice.title);
  }
  return joined(titles, localized(kListSeparatorText));
}

}  // namespace

std::string localized(std::string_view text) {
  static const auto bundle = [] {
    std::string reason;
    return platform::linux::Bundle::open(bundlePath(), reason);
  }();
  return bundle ? bundle->localizedStringForKey(text, "", std::nullopt) : std::string(text);
}

std::string illegalValuesText(const std::vector<IllegalValue>& values) {
  const auto text = localized(kIllegalValueText);
  std::vector<std::string> lines;
  for (const auto& [label, keyword, value, control, suggested] : values)
    lines.push_back(filled(
        text, {{"[name]", label}, {"[value]", shortText(value)}, {"[allowed]", allowedText(control)}}));
  return joined(lines, "\n");
}

std::string failureText(const Failure& failure) {
  const auto* const text =
      std::ranges::find(kTroubleTexts, failure.trouble(), [](const auto& entry) { return entry.first; });
  if (text == kTroubleTexts.end()) return failure.fact();
  return localized(text->second) + '\n' + failure.fact();
}

std::string failuresText(const std::vector<Failure>& failures) {
  std::vector<std::string> paragraphs;
  for (const auto& failure : failures) paragraphs.push_back(failureText(failure));
  return joined(paragraphs, "\n\n");
}

std::string helpText() {
  std::vector<std::string> paragraphs;
  for (const char* text : kHelpTexts) paragraphs.push_back(localized(text));
  return joined(paragraphs, "\n\n");
}

}  // namespace tandemtrim::host
