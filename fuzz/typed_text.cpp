// The input is a user's actions at the margins, one per line: t(ype), a(ppend), b(ackspace), + or - (the
// stepper), then the first letter of the side, then a text. After each action the box contains a number in
// its range, and no other box has changed.
#include <algorithm>
#include <map>

#include "fuzz/support/panel.hpp"
#include "fuzz/support/target.hpp"
#include "view/decimal_formatter.hpp"
#include "view/margin_entry.hpp"

namespace tandemtrim::fuzz {
namespace {

// A second implementation of the rules of margin entry.
std::string corrected(const std::string& text) {
  std::string digits;
  for (const char character : text) {
    if (std::string_view("0123456789").find(character) == std::string_view::npos) continue;
    if (digits == "0") digits.clear();
    digits += character;
  }
  if (digits.empty()) return std::to_string(kSmallest);
  return std::to_string(digits.size() > 2 ? kLimit : integerHeldBetween(digits, kSmallest, kLimit));
}

void examineRules(const std::string& text) {
  const auto digits = margin_entry::digitString(text);
  require(margin_entry::isDigitChar(digits), "the filter leaves only digits");
  require(margin_entry::digitString(digits) == digits, "filtering twice is the same as filtering once");
  require(margin_entry::isDigitChar(text) == (digits == text), "a text of digits is left as it is");

  const MorvaTTDecimalFormatterKV2 formatter;
  platform::ObjectRef number;
  platform::ObjectRef again;
  require(formatter.getObjectValue(number, text, nullptr), "every text has a number");
  formatter.getObjectValue(again, formatter.stringForObjectValue(number.get()), nullptr);
  require(*again->as<std::int64_t>() == *number->as<std::int64_t>(), "a number's text has that number");
}

class User {
 public:
  User() : job_(std::make_shared<Job>()), panel_(openPanel(job_, std::make_shared<Resources>())) {
    viewOf(*panel_);
    panel_->willShow();
  }

  // Sets the panel for a new job.
  void begin() {
    job_->settings.PMPrintSettingsSetValue("MVTandemTrim", "On", false);
    for (const auto& margin : kMargins) {
      boxes_[std::string(margin.marginName)] = defaultOf(kFirstMargin);
      job_->settings.PMPrintSettingsSetValue(margin.keyword, defaultOf(kFirstMargin), false);
    }
    panel_->restoreValuesAndReturnError(nullptr);
    look();
  }

  void act(std::string_view line) {
    const char verb = line.empty() ? 't' : line[0];
    const auto named = std::ranges::find(kMargins, line.size() < 2 ? 'T' : line[1],
                                         [](const Setting& margin) { return margin.marginName.front(); });
    const std::string side(named == kMargins.end() ? TTCINameMarginTop : named->marginName);
    const std::string text(line.substr(std::min<std::size_t>(2, line.size())));
    auto& view = viewOf(*panel_);
    auto& box = boxes_[side];
    examineRules(text);
    if (verb == '+' || verb == '-') {
      view.step("stepperMargin" + side, verb == '+' ? 1 : -1);
      box = std::to_string(integerHeldBetween(box, kSmallest, kLimit) + (verb == '+' ? 1 : -1));
      box = std::to_string(integerHeldBetween(box, kSmallest, kLimit));
    } else if (verb == 'b') {
      view.backspace(side);
      box = corrected(box.substr(0, box.size() - 1));
    } else if (verb == 'a') {
      view.append(side, text);
      box = corrected(box + text);
    } else {
      view.type(side, text);
      box = corrected(text);
    }
    look();
  }

  void save() {
    panel_->saveValuesAndReturnError(nullptr);
    for (const auto& [side, box] : boxes_)
      require(job_->stored("MV" + side + "Margin") == box, "saved: " + side);
    panel_->restoreValuesAndReturnError(nullptr);
    look();
  }

 private:
  void look() {
    auto& view = viewOf(*panel_);
    for (const auto& [side, box] : boxes_) {
      require(view.control(side).text == box, side + " shows " + box);
      require(view.control("stepperMargin" + side).text == box, side + "'s stepper shows " + box);
    }
  }

  std::shared_ptr<Job> job_;
  std::unique_ptr<platform::PrintPanel> panel_;
  std::map<std::string, std::string> boxes_;
};

}  // namespace

void examine(std::string_view input) {
  // One panel for all inputs: making it takes longer than most of them.
  static User user;
  user.begin();
  for (auto rest = input; !rest.empty();) {
    const auto line = rest.substr(0, rest.find('\n'));
    user.act(line);
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  }
  user.save();
}

}  // namespace tandemtrim::fuzz
