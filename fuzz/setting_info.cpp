// The input is the file of the setting-info property list. Either it is refused, or everything made from it
// is consistent.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "fuzz/support/panel.hpp"
#include "fuzz/support/target.hpp"
#include "fuzz/support/utf.hpp"
#include "platform/property_list.hpp"
#include "plugin/setting_info/common_info.hpp"

namespace tandemtrim::fuzz {
namespace {

using platform::Object;
using platform::ObjectRef;

void examineObject(const Object& object, int level) {
  if (const auto* text = object.as<std::string>()) require(isUtf8(*text), "texts are UTF-8");
  const auto* array = object.as<platform::Array>();
  const auto* dictionary = object.as<platform::Dictionary>();
  require(level <= 8, "nesting is limited");
  if (array != nullptr) {
    for (const auto& item : *array) {
      require(item != nullptr, "an array has no null item");
      examineObject(*item, level + 1);
    }
  }
  if (dictionary != nullptr) {
    for (const auto& [key, item] : *dictionary) {
      require(isUtf8(key) && item != nullptr, "a dictionary has UTF-8 keys and no null value");
      examineObject(*item, level + 1);
    }
  }
}

void examineCommonInfo(const MorvaTTCommonInfoKV2& info) {
  for (const auto& margin : kMargins) {
    const auto side = margin.marginName;
    const auto limit = info.marginLimit(side);
    require(limit != nullptr, "every side has a limit");
    const auto minimum = platform::integerValue(info.defaultMarginMin());
    const auto maximum = platform::integerValue(info.defaultMarginMax());
    require(limit == info.defaultMarginMin() || limit->integerValue() <= maximum,
            "no limit above the maximum");
    require(limit->integerValue() >= minimum || limit == info.defaultMarginMax(),
            "no limit below the minimum");
    require(info.defaultMarginValue(side) == info.defaultMarginValue(side), "the very object each time");
  }
  require(!info.marginLimit("Middle") && !info.defaultMarginValue("Middle"), "no other sides");
}

double numberShownIn(const std::string& text) {
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  require(end != text.c_str() && *end == '\0', "boxes and steppers show numbers");
  return number;
}

// The bounds may be real numbers: the box shows them in full, the stepper truncated.
void examineMargin(platform::memory::PanelView& view, const std::string& side) {
  view.type(side, "7");
  const auto box = view.control(side);
  const double shown = numberShownIn(box.text);
  const double expected = 7 < box.min ? box.min : 7 > box.max ? box.max : 7;
  require(!std::isfinite(shown) || std::abs(std::trunc(shown) - expected) <= std::abs(expected) * 1e-15,
          "a typed number is clamped to the list's range");
  const auto whole = integerHeldBetween(box.text, INT64_MIN, INT64_MAX);
  require(numberShownIn(view.control("stepperMargin" + side).text) == static_cast<double>(whole),
          "the stepper shows the box's integer");
}

// Uses the panel of this property list. Raises std::invalid_argument for a value that the list lacks.
void examinePanel(const std::shared_ptr<Resources>& bundle) {
  const auto job = std::make_shared<Job>();
  const auto panel = openPanel(job, bundle);
  require(panel != nullptr, "with common info there is a panel");
  (void)panel->panelKind();
  auto& view = viewOf(*panel);
  panel->willShow();
  panel->saveValuesAndReturnError(nullptr);
  const auto saved = job->settings.entries().size();
  (void)panel->summaryInfo();
  require(job->settings.entries().size() == saved, "a summary stores nothing");
  if (view.control("tandemTrimValid").state == platform::CheckBox::kOff) view.click("tandemTrimValid");
  for (const auto& margin : kMargins) examineMargin(view, std::string(margin.marginName));
}

}  // namespace

void examine(std::string_view input) {
  settingInfoOfInput() = input;
  const auto root = platform::dictionaryWithContentsOfFile(kOfInput);
  const auto bundle = std::make_shared<Resources>(kOfInput);
  if (root) examineObject(Object(*root), 1);
  try {
    const auto info = MorvaTTCommonInfoKV2::initWithCallback(std::make_shared<Job>(), bundle);
    require((info != nullptr) == (root != nullptr), "a property list that is read makes common info");
    if (!info) return;
    examineCommonInfo(*info);
    examinePanel(bundle);
  } catch (const std::invalid_argument&) {
    require(root != nullptr, "only a list that is read can have a value of the wrong kind");
  }
}

}  // namespace tandemtrim::fuzz
