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
/// target instances). This class handles plain text. Every call that a ticket makes to its own operations is
/// virtual, so that a derived class's override is the one that runs, the seeding at construction included.
class MorvaTTPrintTicketKV2 {
 public:
  using Controls = std::vector<platform::Control*>;

  /// A ticket that has stored its default under its key if the print settings held nothing there. None when
  /// an argument is none (nothing is read or written then), or when the common info is not ready (the default
  /// stays stored).
  [[nodiscard]] static std::unique_ptr<MorvaTTPrintTicketKV2> initWithDefaultValue(
      std::optional<std::string> defaultValue, std::optional<std::string> ticketKey,
      std::shared_ptr<MorvaTTCommonInfoKV2> commonInfo) {
    return make<MorvaTTPrintTicketKV2>(std::move(defaultValue), std::move(ticketKey), std::move(commonInfo));
  }

  MorvaTTPrintTicketKV2(const MorvaTTPrintTicketKV2&) = delete;
  MorvaTTPrintTicketKV2& operator=(const MorvaTTPrintTicketKV2&) = delete;
  virtual ~MorvaTTPrintTicketKV2();

  /// Replaces the target instances. They belong to the view; the order counts, since a save reads the first
  /// only.
  void registerTargetInstances(const Controls& controls);

  /// Shows the default in every control; the print settings stay as they are.
  virtual void setToDefault();
  /// Stores what the first control shows; without controls nothing. A write that fails is ignored.
  virtual void saveTicket();
  /// Shows the stored value in every control, the default when none can be read, and returns it unaltered.
  /// Stores nothing.
  virtual std::string restoreTicketFailSafe();

  /// The stored value, else the default. Shows and stores nothing.
  [[nodiscard]] std::string currentValue() const;

  /// Internal: the stored value, or none when there is none or it can't be read.
  [[nodiscard]] virtual std::optional<std::string> TTPTPrintSettings(std::string_view key) const;
  /// Internal: stores the value, or removes the key for none; whether the print settings accepted it.
  virtual bool TTPTSetPrintSettings(std::string_view key, const std::optional<std::string>& value);

  [[nodiscard]] virtual const std::string& key() const { return key_; }
  [[nodiscard]] virtual const std::string& defaultValue() const { return defaultValue_; }
  [[nodiscard]] virtual const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo() const {
    return commonInfo_;
  }
  [[nodiscard]] virtual Controls& targetInstances() { return targetInstances_; }

 protected:
  MorvaTTPrintTicketKV2() = default;

  /// What initWithDefaultValue of each class does: builds first and seeds after, when overrides are in force.
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
  /// Captions every check box.
  void setTitle(std::string_view title);
};

/// A setting chosen from a menu: stored as the represented object of the selected item, found again by the
/// localised title of what is stored. With no item selected a save removes what was stored.
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

  /// Shows the number's decimal text in every control. Raises std::invalid_argument for an object that has
  /// none.
  void setMarginValue(const platform::Object& value);
};

}  // namespace tandemtrim
