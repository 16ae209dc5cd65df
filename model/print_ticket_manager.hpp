#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/print_ticket.hpp"
#include "platform/object.hpp"
#include "plugin/setting_info/common_info.hpp"
#include "plugin/setting_info/settings.hpp"

namespace tandemtrim {

/// Owns the tickets. The view uses them only through the manager: all at once, in the order of the settings,
/// or one by its exact ticket name. An unknown name is ignored.
class MorvaTTPrintTicketManagerKV2 final {
 public:
  /// Makes the manager and all tickets. Null when the common info is null or a ticket cannot be made (its
  /// default and those of the tickets before it stay stored). A default or key that the common info lacks, or
  /// that is of the wrong kind, raises std::invalid_argument before anything is stored.
  [[nodiscard]] static std::unique_ptr<MorvaTTPrintTicketManagerKV2> initWithCommonInfo(
      const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo);

  MorvaTTPrintTicketManagerKV2(const MorvaTTPrintTicketManagerKV2&) = delete;
  MorvaTTPrintTicketManagerKV2& operator=(const MorvaTTPrintTicketManagerKV2&) = delete;
  ~MorvaTTPrintTicketManagerKV2();

  void registerTargetInstances(const MorvaTTPrintTicketKV2::Controls& controls, std::string_view ticketName);
  /// Sets the title of the check box.
  void setTitleToValid(std::string_view title);

  void restoreAllTicketFailSafe();
  /// Shows the named setting's current value in its controls and returns it; nullopt for an unknown name.
  std::optional<std::string> restoreTicketFailSafe(std::string_view ticketName);
  void saveAllTicket();
  /// Shows the defaults of all settings but the on/off setting, which stays as it is.
  void setAllToDefaultExceptValid();
  /// Shows the number in the named margin's controls; any other name is ignored.
  void setMarginValue(const platform::Object& value, std::string_view ticketName);

  /// The named setting's ticket, or null for an unknown name.
  [[nodiscard]] MorvaTTPrintTicketKV2* ticketNamed(std::string_view ticketName) const;
  [[nodiscard]] MorvaTTPrintTicketValidKV2* ticketValid() const { return ticketValid_.get(); }
  [[nodiscard]] MorvaTTPrintTicketPopUpKV2* ticketDirection() const { return ticketDirection_.get(); }
  [[nodiscard]] MorvaTTPrintTicketPopUpKV2* ticketPosition() const { return ticketPosition_.get(); }
  [[nodiscard]] MorvaTTPrintTicketMarginKV2* ticketMarginTop() const { return ticketMargins_[kTop].get(); }
  [[nodiscard]] MorvaTTPrintTicketMarginKV2* ticketMarginBottom() const {
    return ticketMargins_[kBottom].get();
  }
  [[nodiscard]] MorvaTTPrintTicketMarginKV2* ticketMarginLeft() const { return ticketMargins_[kLeft].get(); }
  [[nodiscard]] MorvaTTPrintTicketMarginKV2* ticketMarginRight() const {
    return ticketMargins_[kRight].get();
  }

 private:
  MorvaTTPrintTicketManagerKV2() = default;
  bool initialize(const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo);

  /// In the order of the settings.
  [[nodiscard]] std::array<MorvaTTPrintTicketKV2*, kSettings.size()> tickets() const;

  std::unique_ptr<MorvaTTPrintTicketValidKV2> ticketValid_;
  std::unique_ptr<MorvaTTPrintTicketPopUpKV2> ticketDirection_;
  std::unique_ptr<MorvaTTPrintTicketPopUpKV2> ticketPosition_;
  std::array<std::unique_ptr<MorvaTTPrintTicketMarginKV2>, kSides> ticketMargins_;
};

}  // namespace tandemtrim
