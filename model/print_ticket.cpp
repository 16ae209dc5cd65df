#include "model/print_ticket.hpp"

#include <stdexcept>
#include <utility>

#include "plugin/setting_info/setting_names.hpp"

namespace tandemtrim {
namespace {

// Casts the control to the class that the ticket needs. A control of another class raises
// std::invalid_argument.
template <class Class>
Class& as(platform::Control& control) {
  auto* object = dynamic_cast<Class*>(&control);
  if (object == nullptr)
    throw std::invalid_argument("a control of another class is registered with this ticket");
  return *object;
}

}  // namespace

bool MorvaTTPrintTicketKV2::initialize(std::optional<std::string> defaultValue,
                                       std::optional<std::string> ticketKey,
                                       std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
  if (!defaultValue || !ticketKey || !commonInfo) return false;
  defaultValue_ = *std::move(defaultValue);
  key_ = *std::move(ticketKey);
  commonInfo_ = std::move(commonInfo);
  if (!TTPTPrintSettings(this->key())) TTPTSetPrintSettings(this->key(), this->defaultValue());
  return this->commonInfo()->isReady();
}

// Releases the common info before the list of controls.
MorvaTTPrintTicketKV2::~MorvaTTPrintTicketKV2() { commonInfo_.reset(); }

void MorvaTTPrintTicketKV2::registerTargetInstances(const Controls& controls) {
  targetInstances() = controls;
}

void MorvaTTPrintTicketKV2::showText(std::string_view text) {
  for (auto* control : targetInstances()) control->setStringValue(text);
}

void MorvaTTPrintTicketKV2::setToDefault() { showText(defaultValue()); }

void MorvaTTPrintTicketKV2::saveTicket() {
  if (targetInstances().empty()) return;
  TTPTSetPrintSettings(key(), targetInstances().front()->stringValue());
}

std::string MorvaTTPrintTicketKV2::currentValue() const {
  auto stored = TTPTPrintSettings(key());
  return stored ? *std::move(stored) : defaultValue();
}

std::string MorvaTTPrintTicketKV2::restoreTicketFailSafe() {
  auto value = currentValue();
  showText(value);
  return value;
}

std::optional<std::string> MorvaTTPrintTicketKV2::TTPTPrintSettings(std::string_view key) const {
  const auto* settings = commonInfo()->currentPrintSettings();
  std::optional<std::string> value;
  if (settings == nullptr || settings->PMPrintSettingsGetValue(key, value) != platform::kNoError)
    return std::nullopt;
  return value;
}

bool MorvaTTPrintTicketKV2::TTPTSetPrintSettings(std::string_view key,
                                                 const std::optional<std::string>& value) {
  auto* settings = commonInfo()->currentPrintSettings();
  return settings != nullptr && settings->PMPrintSettingsSetValue(key, value, false) == platform::kNoError;
}

void MorvaTTPrintTicketValidKV2::saveTicket() {
  if (targetInstances().empty()) return;
  const bool on = as<platform::CheckBox>(*targetInstances().front()).state() == platform::CheckBox::kOn;
  TTPTSetPrintSettings(key(), std::string(on ? TTCITandemTrimOn : TTCITandemTrimOff));
}

std::string MorvaTTPrintTicketValidKV2::restoreTicketFailSafe() {
  auto value = currentValue();
  const int state = value == TTCITandemTrimOn ? platform::CheckBox::kOn : platform::CheckBox::kOff;
  for (auto* control : targetInstances()) as<platform::CheckBox>(*control).setState(state);
  return value;
}

void MorvaTTPrintTicketValidKV2::setTitle(std::string_view title) {
  for (auto* control : targetInstances()) as<platform::CheckBox>(*control).setTitle(title);
}

void MorvaTTPrintTicketPopUpKV2::select(std::string_view name) {
  const auto title = commonInfo()->localizedString(name);
  for (auto* control : targetInstances()) as<platform::PopUpButton>(*control).selectItemWithTitle(title);
}

void MorvaTTPrintTicketPopUpKV2::setToDefault() { select(defaultValue()); }

void MorvaTTPrintTicketPopUpKV2::saveTicket() {
  if (targetInstances().empty()) return;
  const auto* item = as<platform::PopUpButton>(*targetInstances().front()).selectedItem();
  TTPTSetPrintSettings(key(), item == nullptr ? std::nullopt : item->representedObject());
}

std::string MorvaTTPrintTicketPopUpKV2::restoreTicketFailSafe() {
  auto value = currentValue();
  select(value);
  return value;
}

void MorvaTTPrintTicketMarginKV2::setMarginValue(const platform::Object& value) {
  showText(value.stringValue());
}

}  // namespace tandemtrim
