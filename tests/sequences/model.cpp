#include "tests/sequences/model.hpp"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace tandemtrim::sequences {
namespace {

constexpr std::size_t kValid = 0;
constexpr std::array<std::size_t, kMenus> kMenuSettings{1, 2};
const std::array<std::vector<std::string>, kMenus> kItems{
    {{"LongEdgeFeed", "ShortEdgeFeed"}, {"Left", "Center", "Right"}}};
constexpr std::array<const char*, kMenus + kSides> kTitles{
    "ImageDirection", "InformPrintingPosition", "TopMargin", "BottomMargin", "LeftMargin", "RightMargin"};

std::string rangeText(std::string text, const std::string& token, const std::string& number) {
  if (token.empty()) return text;
  std::string replaced;
  for (std::size_t at = 0; at < text.size();) {
    if (text.compare(at, token.size(), token) == 0) {
      replaced += number;
      at += token.size();
    } else {
      replaced += text[at++];
    }
  }
  return replaced;
}

void select(MenuLook& menu, const std::string& title) {
  menu.selected = std::nullopt;
  for (std::size_t item = menu.items.size(); item > 0; --item) {
    if (menu.items[item - 1].first == title) menu.selected = item - 1;
  }
}

}  // namespace

// The number at the beginning of a text: white space, one sign, digits. It is clamped to 64 bits.
long long Model::wholeOf(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size() && std::string(" \t\n\v\f\r").find(text[at]) != std::string::npos) ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
  // Computed as a negative number, as there is one more of them than of positive ones.
  constexpr auto kLeast = std::numeric_limits<long long>::min();
  long long value = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    const int digit = text[at] - '0';
    value = value < (kLeast + digit) / 10 ? kLeast : value * 10 - digit;
  }
  if (negative) return value;
  return value == kLeast ? std::numeric_limits<long long>::max() : -value;
}

// A stepper shows up to 16 digits of its number.
std::string Model::shownByStepper(double value) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.16g", value);
  return text.data();
}

std::string Model::word(const Panel& panel, const std::string& key) {
  const auto entry = panel.bundle->strings.find(key);
  return entry == panel.bundle->strings.end() ? key : entry->second;
}

// Checks the lower bound first; a missing bound counts as 0.
std::optional<Model::Number> Model::clamped(const std::optional<Number>& value, const Text& least,
                                            const Text& largest) {
  const auto bound = [](const Text& text) {
    return text ? std::optional(Number{wholeOf(*text), *text}) : std::nullopt;
  };
  if (!value || value->whole < bound(least).value_or(Number{}).whole) return bound(least);
  if (value->whole > bound(largest).value_or(Number{}).whole) return bound(largest);
  return value;
}

Text Model::read(const std::string& key) const {
  if (job_ == kJobs || key.empty()) return std::nullopt;
  for (const auto& [name, value] : observation_.jobs.at(job_)) {
    if (name == key) return value;
  }
  return std::nullopt;
}

void Model::write(const std::string& key, const Text& value) {
  if (job_ != kJobs) writeTo(job_, key, value, false);
}

void Model::writeTo(std::size_t job, const std::string& key, const Text& value, bool lock) {
  if (key.empty() || locked_.at(job).contains(key)) return;
  auto& entries = observation_.jobs.at(job);
  const auto entry =
      std::find_if(entries.begin(), entries.end(), [&](auto& one) { return one.first == key; });
  if (!value) {
    if (entry != entries.end()) entries.erase(entry);
    return;
  }
  if (entry != entries.end()) {
    entry->second = *value;
  } else {
    entries.emplace_back(key, *value);
  }
  if (lock) locked_.at(job).insert(key);
}

std::string Model::valueOf(const Panel& panel, std::size_t setting) const {
  const auto& bundle = *panel.bundle;
  return read(*bundle.keys.at(setting)).value_or(*bundle.defaults.at(setting));
}

void Model::showValue(const Panel& panel, Look& look, std::size_t setting, const std::string& value) const {
  if (setting == kValid) {
    look.check = value == "On" ? 1 : 0;
  } else if (setting < kFirstMargin) {
    select(look.menus.at(setting - 1), word(panel, value));
  } else {
    auto& margin = look.margins.at(setting - kFirstMargin);
    margin.box = value;
    margin.stepper = shownByStepper(static_cast<double>(wholeOf(value)));
  }
}

void Model::showStored(const Panel& panel, Look& look) const {
  for (std::size_t setting = 0; setting < kSettings; ++setting)
    showValue(panel, look, setting, valueOf(panel, setting));
}

void Model::save(const Panel& panel, const Look& look) {
  const auto& keys = panel.bundle->keys;
  write(*keys.at(kValid), look.check == 1 ? "On" : "Off");
  for (std::size_t menu = 0; menu < kMenus; ++menu) {
    const auto& [items, selected, enabled] = look.menus.at(menu);
    write(*keys.at(kMenuSettings.at(menu)), selected ? items.at(*selected).second : std::nullopt);
  }
  for (std::size_t side = 0; side < kSides; ++side)
    write(*keys.at(kFirstMargin + side), look.margins.at(side).box);
}

void Model::grey(Look& look) {
  const bool on = look.check == 1;
  for (auto& menu : look.menus) menu.enabled = on;
  for (auto& margin : look.margins) margin.boxEnabled = margin.stepperEnabled = on;
  look.buttonEnabled = on;
  look.dimmed.fill(!on);
}

std::string Model::makePanel(const Operation& operation) {
  const auto& bundle = configurations().at(operation.which);
  Panel made{&bundle, {}};
  const auto& maxima = printers().at(static_cast<std::size_t>(operation.number));
  for (std::size_t side = 0; side < kSides; ++side) {
    const auto& said = maxima.at(side);
    std::optional<Number> candidate;
    if (said) {
      candidate = Number{wholeOf(*said), std::to_string(wholeOf(*said))};
    } else if (bundle.limit) {
      candidate = Number{wholeOf(*bundle.limit), *bundle.limit};
    }
    const auto limit = clamped(candidate, bundle.min, bundle.max);
    if (!limit) return "raised";
    made.limits.at(side) = *limit;
  }
  const auto missing = [](const Text& text) { return !text; };
  if (std::ranges::any_of(bundle.defaults, missing) || std::ranges::any_of(bundle.keys, missing))
    return "raised";
  for (std::size_t setting = 0; setting < kSettings; ++setting) {
    const auto& key = *bundle.keys.at(setting);
    if (!read(key)) write(key, bundle.defaults.at(setting));
  }
  panels_.at(operation.panel) = made;
  observation_.looks.at(operation.panel) = std::nullopt;
  return "a panel";
}

std::string Model::setUpView(Panel& panel, std::optional<Look>& look) {
  if (look) return "a view";
  look.emplace();
  const auto& bundle = *panel.bundle;
  for (std::size_t menu = 0; menu < kMenus; ++menu) look->menus.at(menu).items.resize(kItems.at(menu).size());
  for (std::size_t label = 0; label < kTitles.size(); ++label)
    look->labels.at(label) = word(panel, kTitles.at(label)) + ":";
  if (!bundle.min) return "raised";
  for (std::size_t side = 0; side < kSides; ++side) {
    auto text = rangeText(word(panel, "IntegerValueRangeFormat"), *bundle.minToken, *bundle.min);
    text = rangeText(text, *bundle.maxToken, panel.limits.at(side).text);
    look->labels.at(kTitles.size() + side) = "mm   " + text;
    look->margins.at(side).least = static_cast<double>(wholeOf(*bundle.min));
    look->margins.at(side).largest = static_cast<double>(panel.limits.at(side).whole);
  }
  for (std::size_t menu = 0; menu < kMenus; ++menu) {
    const auto& names = kItems.at(menu);
    for (std::size_t item = 0; item < names.size(); ++item)
      look->menus.at(menu).items.at(item) = {word(panel, names[item]), names[item]};
  }
  look->checkTitle = word(panel, "EnableTandemTrim");
  look->buttonTitle = word(panel, "RestoreDefault");
  panel.isSetUp = true;
  return "a view";
}

std::string Model::edit(const Panel& panel, MarginLook& margin, std::size_t side, std::string text) {
  if (!margin.boxEnabled) return "ignored";
  margin.box = std::move(text);
  if (!panel.isSetUp) return "done";
  std::erase_if(margin.box, [](char unit) { return unit < '0' || unit > '9'; });
  const auto& limit = panel.limits.at(side);
  const Number typed{wholeOf(margin.box), std::to_string(wholeOf(margin.box))};
  margin.box = typed.text;
  if (typed.whole < wholeOf(*panel.bundle->min)) {
    margin.box = *panel.bundle->min;
  } else if (typed.whole > limit.whole) {
    margin.box = limit.text;
  }
  margin.stepper = shownByStepper(static_cast<double>(wholeOf(margin.box)));
  return "done";
}

std::string Model::act(const Operation& operation, const Panel& panel, Look& look) {
  auto& margin = look.margins.at(operation.which < kSides ? operation.which : 0);
  auto& menu = look.menus.at(operation.which < kMenus ? operation.which : 0);
  switch (operation.call) {
    case Call::type:
      return edit(panel, margin, operation.which, operation.text);
    case Call::append:
      return edit(panel, margin, operation.which, margin.box + operation.text);
    case Call::backspace: {
      if (margin.box.empty()) return margin.boxEnabled ? "done" : "ignored";
      auto kept = margin.box.size() - 1;
      while (kept > 0 && (margin.box[kept] & '\xC0') == '\x80') --kept;
      return edit(panel, margin, operation.which, margin.box.substr(0, kept));
    }
    case Call::step:
      if (!margin.stepperEnabled) return "ignored";
      for (int click = 0; click < std::abs(operation.number); ++click) {
        auto value = std::stod(margin.stepper);
        value += operation.number > 0 ? 1 : -1;
        if (value > margin.largest) value = margin.largest;
        if (value < margin.least) value = margin.least;
        margin.box = margin.stepper = shownByStepper(static_cast<double>(wholeOf(shownByStepper(value))));
      }
      return "done";
    case Call::choose:
      if (!menu.enabled) return "ignored";
      menu.selected = static_cast<std::size_t>(operation.number);
      return "done";
    case Call::clickCheck:
      look.check = look.check == 1 ? 0 : 1;
      grey(look);
      return "done";
    case Call::clickDefault:
      if (!look.buttonEnabled) return "ignored";
      for (std::size_t setting = 1; setting < kSettings && panel.isSetUp; ++setting)
        showValue(panel, look, setting, *panel.bundle->defaults.at(setting));
      return "done";
    default:
      look.check = -1;
      return "done";
  }
}

std::string Model::summary(const Panel& panel, std::optional<Look>& look) {
  std::map<std::string, std::string> rows;
  const auto apply = [&](std::size_t setting) {
    auto value = valueOf(panel, setting);
    if (look && panel.isSetUp) showValue(panel, *look, setting, value);
    return value;
  };
  const auto valid = apply(kValid);
  std::string order;
  if (valid != "On") {
    rows[word(panel, "EnableTandemTrim")] = word(panel, valid);
  } else {
    for (std::size_t row = 0; row < kTitles.size(); ++row) {
      const auto value = apply(row + 1);
      const auto title = word(panel, kTitles.at(row));
      rows[title] = row < kMenus ? word(panel, value) : value;
      order += "\n" + title;
    }
  }
  std::string text;
  for (const auto& [title, value] : rows) text += title + "=" + value + "\n";
  return text + order;
}

std::string Model::description(const Panel& panel) {
  return word(panel, "TandemTrim") + "|" + panel.bundle->kind.value_or("none") +
         "|hide help print|MVTandemTrim MVImageDirectionPriority MVPrintPosition MVTopMargin MVBottomMargin "
         "MVLeftMargin MVRightMargin |1 line logged";
}

std::string Model::run(const Operation& operation) {
  auto& panel = panels_.at(operation.panel);
  auto& look = observation_.looks.at(operation.panel);
  const auto number = static_cast<std::size_t>(operation.number);
  switch (operation.call) {
    case Call::makePanel:
      return makePanel(operation);
    case Call::refuse:
      return "none none none";
    case Call::changeJob:
      job_ = number;
      return {};
    case Call::store:
    case Call::lock:
      writeTo(number, *configurations().front().keys.at(operation.which), operation.text,
              operation.call == Call::lock);
      return {};
    case Call::remove:
      writeTo(number, *configurations().front().keys.at(operation.which), std::nullopt, false);
      return {};
    default:
      break;
  }
  if (!panel) return "no panel";
  switch (operation.call) {
    case Call::dropPanel:
      panel.reset();
      look.reset();
      return {};
    case Call::panelView:
      return setUpView(*panel, look);
    case Call::willShow:
    case Call::restore:
      if (panel->isSetUp) {
        showStored(*panel, *look);
        grey(*look);
      }
      return "true";
    case Call::save:
      if (panel->isSetUp) save(*panel, *look);
      return "true";
    case Call::summary:
      return summary(*panel, look);
    case Call::describe:
      return description(*panel);
    default:
      return look ? act(operation, *panel, *look) : "no view";
  }
}

void Model::play(const Operation& operation) { observation_.result = run(operation); }

}  // namespace tandemtrim::sequences
