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
#include "view/controls.hpp"

namespace tandemtrim {

/// Stands behind the panel's view: loads the nib once, fills in its texts, tells the tickets their controls,
/// keeps the margin boxes within their ranges, greys what depends on the check box and builds the summary. It
/// owns the ticket manager; the common info belongs to the panel, the view and its controls to the loaded
/// nib.
class MorvaTTViewControllerKV2 : public platform::NibOwner {
 public:
  /// None when the common info is none or the ticket manager cannot be made; what the manager raises goes on
  /// to the caller. The common info must outlive the controller.
  [[nodiscard]] static std::unique_ptr<MorvaTTViewControllerKV2> initWithCommonInfo(
      const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo);
  ~MorvaTTViewControllerKV2() override;

  /// The panel's view, or null when the nib has none. The first call loads the nib and sets the view up; a
  /// nib that lacks a control raises std::invalid_argument, one with more menu items than names
  /// std::out_of_range, and the view then stays as far as it came.
  platform::View* panelViewWithNibName(std::string_view nibName);

  /// Greys or enables the dependent controls; nothing before the view is set up.
  void updateView();
  /// Shows what the print settings hold; nothing before the view is set up. Always true.
  bool restoreNonPPDSettingsFromPrintSettings();
  /// Stores what the controls show; nothing before the view is set up. Always true.
  bool saveNonPPDSettingsToPrintSettings();

  /// The panel's part of the dialog's summary: the on/off row alone, or six rows and, under the given key,
  /// the order of their titles. Reads the print settings and puts what it reads into the controls.
  [[nodiscard]] platform::Dictionary summaryInfoWithDispOrderKey(std::string_view dispOrderKey);

  /// Action of the check box; the sender does not matter.
  void changeTandemTrimValid(platform::NibObject* sender);
  /// Action of the restore-default button; the sender does not matter.
  void setDefaultValue(platform::NibObject* sender);
  /// Corrects an edited text box, the notification's object, and shows the accepted number in its margin's
  /// controls. An object that is none or no text box does nothing.
  void controlTextDidChange(const platform::Notification& notification);

  // NibOwner
  [[nodiscard]] std::vector<std::string_view> outletNames() const override;
  void setOutlet(std::string_view name, platform::NibObject* object) override;
  void performAction(std::string_view name, platform::NibObject* sender) override;

  [[nodiscard]] bool viewIsInited() const { return viewIsInited_; }
  void setViewIsInited(bool inited) { viewIsInited_ = inited; }
  [[nodiscard]] MorvaTTCommonInfoKV2* commonInfo() const { return commonInfo_; }
  [[nodiscard]] MorvaTTPrintTicketManagerKV2* ticket() const { return ticket_.get(); }

  /// The outlets, null until the nib connects them.
  [[nodiscard]] MorvaTTTextLabelKV2* labelDirection() const { return labelDirection_; }
  void setLabelDirection(MorvaTTTextLabelKV2* control) { labelDirection_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelPosition() const { return labelPosition_; }
  void setLabelPosition(MorvaTTTextLabelKV2* control) { labelPosition_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginTop() const { return labelMarginTop_; }
  void setLabelMarginTop(MorvaTTTextLabelKV2* control) { labelMarginTop_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginBottom() const { return labelMarginBottom_; }
  void setLabelMarginBottom(MorvaTTTextLabelKV2* control) { labelMarginBottom_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginLeft() const { return labelMarginLeft_; }
  void setLabelMarginLeft(MorvaTTTextLabelKV2* control) { labelMarginLeft_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginRight() const { return labelMarginRight_; }
  void setLabelMarginRight(MorvaTTTextLabelKV2* control) { labelMarginRight_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginLimitTop() const { return labelMarginLimitTop_; }
  void setLabelMarginLimitTop(MorvaTTTextLabelKV2* control) { labelMarginLimitTop_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginLimitBottom() const { return labelMarginLimitBottom_; }
  void setLabelMarginLimitBottom(MorvaTTTextLabelKV2* control) { labelMarginLimitBottom_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginLimitLeft() const { return labelMarginLimitLeft_; }
  void setLabelMarginLimitLeft(MorvaTTTextLabelKV2* control) { labelMarginLimitLeft_ = control; }
  [[nodiscard]] MorvaTTTextLabelKV2* labelMarginLimitRight() const { return labelMarginLimitRight_; }
  void setLabelMarginLimitRight(MorvaTTTextLabelKV2* control) { labelMarginLimitRight_ = control; }
  [[nodiscard]] MorvaTTTextBoxKV2* textBoxMarginTop() const { return textBoxMarginTop_; }
  void setTextBoxMarginTop(MorvaTTTextBoxKV2* control) { textBoxMarginTop_ = control; }
  [[nodiscard]] MorvaTTTextBoxKV2* textBoxMarginBottom() const { return textBoxMarginBottom_; }
  void setTextBoxMarginBottom(MorvaTTTextBoxKV2* control) { textBoxMarginBottom_ = control; }
  [[nodiscard]] MorvaTTTextBoxKV2* textBoxMarginLeft() const { return textBoxMarginLeft_; }
  void setTextBoxMarginLeft(MorvaTTTextBoxKV2* control) { textBoxMarginLeft_ = control; }
  [[nodiscard]] MorvaTTTextBoxKV2* textBoxMarginRight() const { return textBoxMarginRight_; }
  void setTextBoxMarginRight(MorvaTTTextBoxKV2* control) { textBoxMarginRight_ = control; }
  [[nodiscard]] MorvaTTStepperKV2* stepperMarginTop() const { return stepperMarginTop_; }
  void setStepperMarginTop(MorvaTTStepperKV2* control) { stepperMarginTop_ = control; }
  [[nodiscard]] MorvaTTStepperKV2* stepperMarginBottom() const { return stepperMarginBottom_; }
  void setStepperMarginBottom(MorvaTTStepperKV2* control) { stepperMarginBottom_ = control; }
  [[nodiscard]] MorvaTTStepperKV2* stepperMarginLeft() const { return stepperMarginLeft_; }
  void setStepperMarginLeft(MorvaTTStepperKV2* control) { stepperMarginLeft_ = control; }
  [[nodiscard]] MorvaTTStepperKV2* stepperMarginRight() const { return stepperMarginRight_; }
  void setStepperMarginRight(MorvaTTStepperKV2* control) { stepperMarginRight_ = control; }
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

  bool viewIsInited_ = false;
  MorvaTTCommonInfoKV2* commonInfo_ = nullptr;
  std::unique_ptr<MorvaTTPrintTicketManagerKV2> ticket_;
  MorvaTTTextLabelKV2* labelDirection_ = nullptr;
  MorvaTTTextLabelKV2* labelPosition_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginTop_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginBottom_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginLeft_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginRight_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginLimitTop_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginLimitBottom_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginLimitLeft_ = nullptr;
  MorvaTTTextLabelKV2* labelMarginLimitRight_ = nullptr;
  MorvaTTTextBoxKV2* textBoxMarginTop_ = nullptr;
  MorvaTTTextBoxKV2* textBoxMarginBottom_ = nullptr;
  MorvaTTTextBoxKV2* textBoxMarginLeft_ = nullptr;
  MorvaTTTextBoxKV2* textBoxMarginRight_ = nullptr;
  MorvaTTStepperKV2* stepperMarginTop_ = nullptr;
  MorvaTTStepperKV2* stepperMarginBottom_ = nullptr;
  MorvaTTStepperKV2* stepperMarginLeft_ = nullptr;
  MorvaTTStepperKV2* stepperMarginRight_ = nullptr;
  MorvaTTCheckBoxKV2* tandemTrimValid_ = nullptr;
  MorvaTTPopUpButtonKV2* directionPopUp_ = nullptr;
  MorvaTTPopUpButtonKV2* positionPopUp_ = nullptr;
  MorvaTTButtonKV2* defaultButton_ = nullptr;
  platform::View* tandemTrimView_ = nullptr;
};

}  // namespace tandemtrim
