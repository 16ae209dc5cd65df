#include <functional>
#include <random>
#include <set>

#include "tests/conformance/conformance_test.hpp"
#include "tests/support/text_pieces.hpp"

namespace tandemtrim::conformance {
namespace {

/// Random input from a seed that each failure names. TANDEM_TRIM_SEED repeats a run.
class Properties : public Conformance {
 protected:
  const unsigned seed = [] {
    const char* given = std::getenv("TANDEM_TRIM_SEED");
    return given == nullptr ? std::random_device{}() : static_cast<unsigned>(std::stoul(given));
  }();
  std::mt19937 random{seed};
  testing::ScopedTrace trace{__FILE__, __LINE__, "TANDEM_TRIM_SEED=" + std::to_string(seed)};

  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  }
  template <class Container>
  const auto& anyOf(const Container& container) {
    return container[below(std::size(container))];
  }
  std::string anyText() {
    std::string text;
    for (auto pieces = below(6); pieces > 0; --pieces) text += anyOf(test::kTextPieces);
    return text;
  }
  static bool isCanonical(const std::string& text, int limit) {
    return text.find_first_not_of("0123456789") == std::string::npos && !text.empty() && text.size() < 4 &&
           text == std::to_string(std::stoi(text)) && std::stoi(text) <= limit;
  }
};

constexpr int kRounds = 300;

TEST_F(Properties, AfterAnEditABoxHasACanonicalDecimalInItsRangeAndTheOtherSidesAreUntouched) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (int round = 0; round < kRounds; ++round) {
    const auto& side = anyOf(kSides);
    std::map<std::string, std::string> before;
    for (const auto& other : kSides) before[other.name] = text(other.textBox);
    const auto typed = anyText();
    below(2) == 0 ? panel->replaceText(side.textBox, typed) : panel->type(side.textBox, typed.substr(0, 1));
    EXPECT_TRUE(isCanonical(text(side.textBox), side.limit))
        << '"' << typed << "\" left " << text(side.textBox);
    EXPECT_EQ(text(side.stepper), text(side.textBox));
    for (const auto& other : kSides) {
      if (other.name == side.name) continue;
      EXPECT_EQ(text(other.textBox), before[other.name]) << typed;
    }
  }
}

TEST_F(Properties, SaveThenRestoreShowsTheSame) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (int round = 0; round < kRounds / 3; ++round) {
    for (const auto& side : kSides) panel->replaceText(side.textBox, anyText());
    panel->choose("positionPopUp", anyOf(std::vector<std::string>{"Left", "Center", "Right"}));
    panel->choose("directionPopUp", anyOf(std::vector<std::string>{"LongEdgeFeed", "ShortEdgeFeed"}));
    const auto shown = [&] {
      std::vector<std::string> texts{text("positionPopUp"), text("directionPopUp")};
      for (const auto& side : kSides) texts.push_back(text(side.textBox));
      return texts;
    };
    const auto before = shown();
    panel->save();
    const auto saved = storedSettings();
    panel->restore();
    EXPECT_EQ(shown(), before);
    panel->save();
    EXPECT_EQ(storedSettings(), saved);
  }
}

TEST_F(Properties, AnySequenceOfCallsLeavesLegalOrForeignSettingsAndRemovesChoicesOnly) {
  const std::vector<std::string> kPositions{"Left", "Center", "Right"};
  const std::vector<std::string> kDirections{"LongEdgeFeed", "ShortEdgeFeed"};
  const auto legal = [&](const std::string& key, const std::string& value) {
    if (key == "MVTandemTrim") return value == "On" || value == "Off";
    if (key == "MVPrintPosition") return std::ranges::count(kPositions, value) == 1;
    if (key == "MVImageDirectionPriority") return std::ranges::count(kDirections, value) == 1;
    const auto side = std::ranges::find(kSides, key, &Side::key);
    return isCanonical(value, side->limit);
  };
  for (int sequence = 0; sequence < kRounds / 10; ++sequence) {
    std::map<std::string, std::set<std::string>> foreign;
    scene.stored.clear();
    for (const auto& key : kKeys) {
      if (below(3) == 0) foreign[key].insert(scene.stored[key] = anyText());
    }
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(below(4) != 0 || panel->save());
    ASSERT_TRUE(panel->panelView());
    const std::vector<std::function<void()>> calls{
        [&] { panel->panelView(); },
        [&] { panel->willShow(); },
        [&] { panel->restore(); },
        [&] { panel->save(); },
        [&] { (void)panel->summaryInfo(); },
        [&] { panel->click("tandemTrimValid"); },
        [&] { panel->click("defaultButton"); },
        [&] { panel->choose("positionPopUp", anyOf(kPositions)); },
        [&] { panel->choose("directionPopUp", anyOf(kDirections)); },
        [&] { panel->replaceText(anyOf(kSides).textBox, anyText()); },
        [&] { panel->type(anyOf(kSides).textBox, "3"); },
        [&] { panel->backspace(anyOf(kSides).textBox); },
        [&] { panel->step(anyOf(kSides).stepper, below(2) == 0 ? 1 : -1); },
        [&] {
          const auto& key = anyOf(kKeys);
          auto value = anyText();
          dialog->store(key, value);
          foreign[key].insert(std::move(value));
        },
        [&] { (void)panel->supportedPPDOptionKeys(); },
    };
    for (int call = 0; call < 30; ++call) {
      anyOf(calls)();
      for (const auto& key : kKeys) {
        const auto value = dialog->stored(key);
        const bool isChoice = key == "MVPrintPosition" || key == "MVImageDirectionPriority";
        if (!value) {
          EXPECT_TRUE(isChoice) << key << " is gone";
        } else {
          EXPECT_TRUE(legal(key, *value) || foreign[key].contains(*value))
              << key << " is \"" << *value << '"';
        }
      }
    }
    panel.reset();
  }
}

}  // namespace
}  // namespace tandemtrim::conformance
