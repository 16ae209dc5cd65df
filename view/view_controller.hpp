#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/print_ticket_manager.hpp"
#include "platform/nib.hpp"
#include "platform/notifications.hpp"
#include "platform/object.hpp"
#include "plugin/setting_info/common_info.hpp"
#include "plugin/setting_info/settings.hpp"
#include "view/controls.hpp"

namespace tandemtrim {

/// The controls of one margin, null until the nib connects them.
struct MarginControls {
  MorvaTTTextLabelKV2* label = nullptr;
  MorvaTTTextLabelKV2* limitLabel = nullptr;
  MorvaTTTextBoxKV2* textBox = nullptr;
  MorvaTTStepperKV2* stepper = nullptr;
};

// The accessors of one margin's controls: labelMarginTop(), setLabelMarginTop() and so on.
#define MARGIN_OUTLETS(Name, side)                                                                        \
  [[nodiscard]] MorvaTTTextLabelKV2* labelMargin##Name() const { return margins_[side].label; }           \
  void setLabelMargin##Name(MorvaTTTextLabelKV2* control) { margins_[side].label = control; }             \
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginLimit##Name() const { return margins_[side].limitLabel; } \
  void setLabelMarginLimit##Name(MorvaTTTextLabelKV2* control) { margins_[side].limitLabel = control; }   \
  [[nodiscard]] MorvaTTTextBoxKV2* textBoxMargin##Name() const { return margins_[side].textBox; }         \
  void setTextBoxMargin##Name(MorvaTTTextBoxKV2* control) { margins_[side].textBox = control; }           \
  [[nodiscard]] MorvaTTStepperKV2* stepperMargin##Name() const { return margins_[side].stepper; }         \
  void setStepperMargin##Name(MorvaTTStepperKV2* control) { margins_[side].stepper = control; }

/// Controls the panel's view: loads the nib, fills in its texts, registers the controls with the tickets,
/// keeps the margin boxes within their ranges, greys the controls that depend on the check box and builds the
/// summary. It owns the ticket manager; the panel owns the common info, and the loaded nib owns the view and
/// its controls.
class MorvaTTViewControllerKV2 : public platform::NibOwner {
 public:
  /// Null when the common info is null or the ticket manager cannot be made; the manager's exceptions reach
  /// the caller. The common info must outlive the controller.
  [[nodiscard]] static std::unique_ptr<MorvaTTViewControllerKV2> initWithCommonInfo(
      const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo);
  ~MorvaTTViewControllerKV2() override;

  /// The panel's view, or null when the nib does not have it. Loads the nib and sets the view up if there is
  /// no view yet. A nib that is missing or lacks a control raises std::invalid_argument, one with more menu
  /// items than names std::out_of_range; the view is then left partly set up.
  platform::View* panelViewWithNibName(std::string_view nibName);

  /// Greys or enables the dependent controls; does nothing before the view is set up.
  void updateView();
  /// Shows the stored values; does nothing before the view is set up. Always true.
  bool restoreNonPPDSettingsFromPrintSettings();
  /// Stores the controls' values; does nothing before the view is set up. Always true.
  bool saveNonPPDSettingsToPrintSettings();

  /// The panel's part of the dialog's summary: only the on/off row when the function is off, else a row for
  /// each other setting and, under the given key, the order of their titles. Also shows the values that it
  /// reads in the controls.
  [[nodiscard]] platform::Dictionary summaryInfoWithDispOrderKey(std::string_view dispOrderKey);

  /// Action of the check box; the sender does not matter.
  void changeTandemTrimValid(platform::NibObject* sender);
  /// Action of the restore-default button; the sender does not matter.
  void setDefaultValue(platform::NibObject* sender);
  /// Corrects an edited text box, the notification's object, and shows the accepted number in its margin's
  /// controls. An object that is null or not a text box is ignored.
  void controlTextDidChange(const platform::Notification& notification);

  // NibOwner
  [[nodiscard]] std::vector<std::string_view> outletNames() const override;
  void setOutlet(std::string_view name, platform::NibObject* object) override;
  void performAction(std::string_view name, platform::NibObject* sender) override;
  [[nodiscard]] std::string localizedString(std::string_view key) const override;

  [[nodiscard]] bool viewIsInited() const { return viewIsInited_; }
  void setViewIsInited(bool inited) { viewIsInited_ = inited; }
  [[nodiscard]] MorvaTTCommonInfoKV2* commonInfo() const { return commonInfo_; }
  [[nodiscard]] MorvaTTPrintTicketManagerKV2* ticket() const { return ticket_.get(); }

  /// The outlets, null until the nib connects them.
  [[nodiscard]] MorvaTTTextLabelKV2* labelDirection() const { return labelDirection_; }
  void setLabelDirection(MorvaTTTextLabelKV2* control) { labelDirection_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelPosition() const { return labelPosition_; }
  void setLabelPosition(MorvaTTTextLabelKV2* control) { labelPosition_ = control; }
  MARGIN_OUTLETS(Top, kTop)
  MARGIN_OUTLETS(Bottom, kBottom)
  MARGIN_OUTLETS(Left, kLeft)
  MARGIN_OUTLETS(Right, kRight)
  [[nodiscard]] MorvaTTCheckBoxKV2* tandemTrimValid() const { return tandemTrimValid_; }
  void setTandemTrimValid(MorvaTTCheckBoxKV2* control) { tandemTrimValid_ = control; }
  [[nodiscard]] MorvaTTPopUpButtonKV2* directionPopUp() const { return directionPopUp_; }
  void setDirectionPopUp(MorvaTTPopUpButtonKV2* control) { directionPopUp_ = control; }
  [[nodiscard]] MorvaTTPopUpButtonKV2* positionPopUp() const { return positionPopUp_; }
  void setPositionPopUp(MorvaTTPopUpButtonKV2* control) { positionPopUp_ = control; }
  [[nodiscard]] MorvaTTButtonKV2* defaultButton() const { return defaultButton_; }
  void setDefaultButton(MorvaTTButtonKV2* control) { defaultButton_ = control; }
  [[nodiscard]] platform::View* tandemTrimView() const { return tandemTrimView_; }
  void setTandemTrimView(platform::View* view) { tandemTrimView_ = view; }

  // Internal: the steps of setting the view up, greying, and the filter of margin entry.
  void TTVCInitializeView();
  void TTVCInitializeLabel();
  void TTVCInitializePopUp();
  void TTVCInitializeTicket();
  void TTVCInitializeMargin();
  void TTVCGreyView();
  [[nodiscard]] std::string TTVCDigitString(std::string text) const;
  [[nodiscard]] bool TTVCIsDigitChar(std::string_view character) const;

 private:
  MorvaTTViewControllerKV2() = default;
  [[nodiscard]] std::string rangeText(std::string_view marginName) const;
  template <class Controller, class Visitor>
  static void visitOutlets(Controller& controller, const Visitor& visit);

  bool viewIsInited_ = false;
  MorvaTTCommonInfoKV2* commonInfo_ = nullptr;
  std::unique_ptr<MorvaTTPrintTicketManagerKV2> ticket_;
  MorvaTTTextLabelKV2* labelDirection_ = nullptr;
  MorvaTTTextLabelKV2* labelPosition_ = nullptr;
  std::array<MarginControls, kSides> margins_;
  MorvaTTCheckBoxKV2* tandemTrimValid_ = nullptr;
  MorvaTTPopUpButtonKV2* directionPopUp_ = nullptr;
  MorvaTTPopUpButtonKV2* positionPopUp_ = nullptr;
  MorvaTTButtonKV2* defaultButton_ = nullptr;
  platform::View* tandemTrimView_ = nullptr;
};
#undef MARGIN_OUTLETS

}  // namespace tandemtrim
