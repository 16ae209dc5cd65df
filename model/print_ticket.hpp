#pragma once

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.hpp"
#include "platform/object.hpp"
#include "plugin/setting_info/common_info.hpp"

namespace tandemtrim {

/// Ties one setting to its entry in the job's print settings, its default and the controls that show it (the
/// target instances). This class handles plain text. A ticket calls its own operations virtually, so that the
/// overrides of a derived class run, even when initWithDefaultValue stores the default.
class MorvaTTPrintTicketKV2 {
 public:
  using Controls = std::vector<platform::Control*>;

  /// Makes a ticket, and stores its default under its key if the print settings have no value there. Null
  /// when an argument is missing (nothing is read or written then), or when the common info is not ready (the
  /// default stays stored).
  [[nodiscard]] static std::unique_ptr<MorvaTTPrintTicketKV2> initWithDefaultValue(
      std::optional<std::string> defaultValue, std::optional<std::string> ticketKey,
      std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
    return make<MorvaTTPrintTicketKV2>(std::move(defaultValue), std::move(ticketKey), std::move(commonInfo));
  }

  MorvaTTPrintTicketKV2(const MorvaTTPrintTicketKV2&) = delete;
  MorvaTTPrintTicketKV2& operator=(const MorvaTTPrintTicketKV2&) = delete;
  virtual ~MorvaTTPrintTicketKV2();

  /// Replaces the target instances, which belong to the view. A save reads only the first one.
  void registerTargetInstances(const Controls& controls);

  /// Shows the default in every control. Stores nothing.
  virtual void setToDefault();
  /// Stores the value of the first control; does nothing without controls. A failed write is ignored.
  virtual void saveTicket();
  /// Shows the stored value, or the default if no value can be read, in every control, and returns it
  /// unaltered. Stores nothing.
  virtual std::string restoreTicketFailSafe();

  /// The stored value, else the default. Shows and stores nothing.
  [[nodiscard]] std::string currentValue() const;

  /// Internal: the stored value, or nullopt when nothing is stored or it cannot be read.
  [[nodiscard]] virtual std::optional<std::string> TTPTPrintSettings(std::string_view key) const;
  /// Internal: stores the value, or removes the key for nullopt. Returns whether the print settings accepted
  /// it.
  virtual bool TTPTSetPrintSettings(std::string_view key, const std::optional<std::string>& value);

  [[nodiscard]] virtual const std::string& key() const { return key_; }
  [[nodiscard]] virtual const std::string& defaultValue() const { return defaultValue_; }
  [[nodiscard]] virtual const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo() const {
    return commonInfo_;
  }
  [[nodiscard]] virtual Controls& targetInstances() { return targetInstances_; }

 protected:
  MorvaTTPrintTicketKV2() = default;

  /// Implements each class's initWithDefaultValue. Stores the default only after construction, when overrides
  /// run.
  template <std::derived_from<MorvaTTPrintTicketKV2> Class>
  [[nodiscard]] static std::unique_ptr<Class> make(std::optional<std::string> defaultValue,
                                                   std::optional<std::string> ticketKey,
                                                   std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
    auto made = std::unique_ptr<Class>(new Class);
    MorvaTTPrintTicketKV2& ticket = *made;
    if (!ticket.initialize(std::move(defaultValue), std::move(ticketKey), std::move(commonInfo)))
      return nullptr;
    return made;
  }

  /// Puts the text into every control.
  void showText(std::string_view text);

 private:
  bool initialize(std::optional<std::string> defaultValue, std::optional<std::string> ticketKey,
                  std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo);

  std::string key_;
  std::string defaultValue_;
  std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo_;
  Controls targetInstances_;
};

/// The on/off setting, shown by a check box: stored as "On" or "Off".
class MorvaTTPrintTicketValidKV2 : public MorvaTTPrintTicketKV2 {
 public:
  [[nodiscard]] static std::unique_ptr<MorvaTTPrintTicketValidKV2> initWithDefaultValue(
      std::optional<std::string> defaultValue, std::optional<std::string> ticketKey,
      std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
    return make<MorvaTTPrintTicketValidKV2>(std::move(defaultValue), std::move(ticketKey),
                                            std::move(commonInfo));
  }

  void saveTicket() override;
  std::string restoreTicketFailSafe() override;
  /// Sets the title of every check box.
  void setTitle(std::string_view title);
};

/// A setting chosen from a menu. A save stores the represented object of the selected item, or removes the
/// stored value if no item is selected; a restore selects the item whose title is the localised stored value.
class MorvaTTPrintTicketPopUpKV2 : public MorvaTTPrintTicketKV2 {
 public:
  [[nodiscard]] static std::unique_ptr<MorvaTTPrintTicketPopUpKV2> initWithDefaultValue(
      std::optional<std::string> defaultValue, std::optional<std::string> ticketKey,
      std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
    return make<MorvaTTPrintTicketPopUpKV2>(std::move(defaultValue), std::move(ticketKey),
                                            std::move(commonInfo));
  }

  void setToDefault() override;
  void saveTicket() override;
  std::string restoreTicketFailSafe() override;

 private:
  void select(std::string_view name);
};

/// A margin, shown by a text box and its stepper: stored as the box's text, decimal millimetres.
class MorvaTTPrintTicketMarginKV2 : public MorvaTTPrintTicketKV2 {
 public:
  [[nodiscard]] static std::unique_ptr<MorvaTTPrintTicketMarginKV2> initWithDefaultValue(
      std::optional<std::string> defaultValue, std::optional<std::string> ticketKey,
      std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
    return make<MorvaTTPrintTicketMarginKV2>(std::move(defaultValue), std::move(ticketKey),
                                             std::move(commonInfo));
  }

  /// Shows the number's decimal text in every control. Raises std::invalid_argument if it is not a number.
  void setMarginValue(const platform::Object& value);
};

}  // namespace tandemtrim
