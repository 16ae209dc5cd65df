#pragma once

#include <set>

#include "tests/sequences/operation.hpp"

namespace tandemtrim::sequences {

/// A second implementation of the panel's behaviour, which keeps plain values and uses none of the panel's
/// code.
class Model {
 public:
  /// Plays one call; observation() then shows its result.
  void play(const Operation& operation);
  [[nodiscard]] const Observation& observation() const { return observation_; }

 private:
  // A margin in a property list or a PPD.
  struct Number {
    long long whole = 0;
    std::string text;
  };
  struct Panel {
    const Configuration* bundle;
    std::array<Number, kSides> limits;
    // False until the view is set up, and if its set-up has raised.
    bool isSetUp = false;
  };

  [[nodiscard]] static long long wholeOf(const std::string& text);
  [[nodiscard]] static std::string shownByStepper(double value);
  [[nodiscard]] static std::string word(const Panel& panel, const std::string& key);
  [[nodiscard]] static std::optional<Number> clamped(const std::optional<Number>& value, const Text& least,
                                                     const Text& largest);

  [[nodiscard]] std::string run(const Operation& operation);
  [[nodiscard]] std::string makePanel(const Operation& operation);
  [[nodiscard]] std::string setUpView(Panel& panel, std::optional<Look>& look);
  [[nodiscard]] std::string act(const Operation& operation, const Panel& panel, Look& look);
  [[nodiscard]] std::string edit(const Panel& panel, MarginLook& margin, std::size_t side, std::string text);
  [[nodiscard]] std::string summary(const Panel& panel, std::optional<Look>& look);
  [[nodiscard]] static std::string description(const Panel& panel);

  [[nodiscard]] Text read(const std::string& key) const;
  void write(const std::string& key, const Text& value);
  void writeTo(std::size_t job, const std::string& key, const Text& value, bool lock);
  [[nodiscard]] std::string valueOf(const Panel& panel, std::size_t setting) const;
  void showValue(const Panel& panel, Look& look, std::size_t setting, const std::string& value) const;
  void showStored(const Panel& panel, Look& look) const;
  void save(const Panel& panel, const Look& look);
  static void grey(Look& look);

  Observation observation_;
  std::array<std::optional<Panel>, kPanels> panels_;
  std::array<std::set<std::string>, kJobs> locked_;
  // The job that the host returns; kJobs for no job.
  std::size_t job_ = 0;
};

}  // namespace tandemtrim::sequences
