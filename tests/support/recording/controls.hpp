#pragma once

#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/fakes.hpp"
#include "view/controls.hpp"

/// Controls that log each change as "name what=value".
namespace tandemtrim::test {

/// Writes one object's lines into a log.
class Notes {
 public:
  Notes(std::string name, Log& log) : name_(std::move(name)), log_(log) {}

  template <class Value>
  void note(std::string_view what, const Value& value) const {
    std::ostringstream line;
    line << std::boolalpha << name_ << ' ' << what << '=' << value;
    log_.push_back(line.str());
  }

 private:
  std::string name_;
  Log& log_;
};

template <class Class>
class Recording : public Class, protected Notes {
 public:
  using Notes::Notes;

  void setEnabled(bool enabled) override { note("enabled", enabled); }
  [[nodiscard]] std::string stringValue() const override { return text; }
  void setStringValue(std::string_view value) override {
    text = value;
    note("text", value);
  }

  std::string text;
};

class RecordingLabel : public Recording<MorvaTTTextLabelKV2> {
 public:
  using Recording::Recording;
  void setTextColor(platform::Color color) override {
    note("color", color == platform::Color::blackColor ? "black" : "gray");
  }
};

template <class Class>
class RecordingIdentified : public Recording<Class> {
 public:
  using Recording<Class>::Recording;
  void setIdentifier(std::string_view identifier) override {
    identifier_ = identifier;
    this->note("identifier", identifier);
  }
  [[nodiscard]] std::string identifier() const override { return identifier_; }

 private:
  std::string identifier_;
};

class RecordingTextBox : public RecordingIdentified<MorvaTTTextBoxKV2> {
 public:
  using RecordingIdentified::RecordingIdentified;
  void setMin(platform::ObjectRef min) override {
    note("min", platform::integerValue(min));
    MorvaTTTextBoxKV2::setMin(std::move(min));
  }
  void setMax(platform::ObjectRef max) override {
    note("max", platform::integerValue(max));
    MorvaTTTextBoxKV2::setMax(std::move(max));
  }
};

class RecordingStepper : public RecordingIdentified<MorvaTTStepperKV2> {
 public:
  using RecordingIdentified::RecordingIdentified;
  void setMinValue(double value) override { note("min", value); }
  void setMaxValue(double value) override { note("max", value); }
};

class RecordingButton : public Recording<MorvaTTButtonKV2> {
 public:
  using Recording::Recording;
  void setTitle(std::string_view title) override { note("title", title); }
};

class RecordingCheckBox : public Recording<MorvaTTCheckBoxKV2> {
 public:
  using Recording::Recording;
  void setTitle(std::string_view title) override { note("title", title); }
  [[nodiscard]] int state() const override { return current; }
  void setState(int state) override {
    current = state;
    note("state", state);
  }

  int current = kOff;
};

class RecordingMenuItem : public platform::MenuItem, private Notes {
 public:
  using Notes::Notes;
  void setTitle(std::string_view title) override { note("title", title); }
  [[nodiscard]] std::optional<std::string> representedObject() const override { return value; }
  void setRepresentedObject(std::string_view object) override {
    value = object;
    note("value", object);
  }

  std::optional<std::string> value;
};

class RecordingPopUp : public Recording<MorvaTTPopUpButtonKV2> {
 public:
  RecordingPopUp(const std::string& name, Log& log, std::size_t count) : Recording(name, log) {
    for (std::size_t index = 0; index < count; ++index)
      items.emplace_back(name + ' ' + std::to_string(index), log);
  }
  [[nodiscard]] std::size_t numberOfItems() const override { return items.size(); }
  [[nodiscard]] platform::MenuItem& itemAtIndex(std::size_t index) override { return items.at(index); }
  [[nodiscard]] platform::MenuItem* selectedItem() override {
    return selected ? &items.at(*selected) : nullptr;
  }
  void selectItemWithTitle(std::string_view title) override { note("selected", title); }

  std::vector<RecordingMenuItem> items;
  std::optional<std::size_t> selected;
};

}  // namespace tandemtrim::test
