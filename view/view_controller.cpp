#include "view/view_controller.hpp"

#include <stdexcept>
#include <utility>

#include "platform/integer_text.hpp"
#include "view/margin_entry.hpp"
#include "view/required.hpp"

namespace tandemtrim {

std::unique_ptr<MorvaTTViewControllerKV2> MorvaTTViewControllerKV2::initWithCommonInfo(
    const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo) {
  auto made = std::unique_ptr<MorvaTTViewControllerKV2>(new MorvaTTViewControllerKV2);
  made->commonInfo_ = commonInfo.get();
  made->ticket_ = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(commonInfo);
  if (!made->ticket_) return nullptr;
  return made;
}

// After this the tickets are destroyed. The base class then destroys the loaded nib with the controls that
// the tickets refer to.
MorvaTTViewControllerKV2::~MorvaTTViewControllerKV2() {
  if (viewIsInited_) platform::defaultCenter().removeObserver(this);
}

platform::View* MorvaTTViewControllerKV2::panelViewWithNibName(std::string_view nibName) {
  if (tandemTrimView_ == nullptr) {
    platform::loadNibNamed(nibName, *this);
    TTVCInitializeView();
  }
  return tandemTrimView_;
}

void MorvaTTViewControllerKV2::updateView() {
  if (viewIsInited_) TTVCGreyView();
}

bool MorvaTTViewControllerKV2::restoreNonPPDSettingsFromPrintSettings() {
  if (viewIsInited_) ticket_->restoreAllTicketFailSafe();
  return true;
}

bool MorvaTTViewControllerKV2::saveNonPPDSettingsToPrintSettings() {
  if (viewIsInited_) ticket_->saveAllTicket();
  return true;
}

void MorvaTTViewControllerKV2::changeTandemTrimValid(platform::NibObject* /*sender*/) { TTVCGreyView(); }

void MorvaTTViewControllerKV2::setDefaultValue(platform::NibObject* /*sender*/) {
  ticket_->setAllToDefaultExceptValid();
}

void MorvaTTViewControllerKV2::TTVCGreyView() {
  std::vector<ViewComponent*> components{required(directionPopUp_), required(positionPopUp_)};
  const auto addOfMargins = [&](auto MarginControls::*control) {
    for (const auto& margin : margins_) components.push_back(required(margin.*control));
  };
  addOfMargins(&MarginControls::textBox);
  addOfMargins(&MarginControls::stepper);
  components.insert(components.end(),
                    {required(defaultButton_), required(labelDirection_), required(labelPosition_)});
  addOfMargins(&MarginControls::label);
  addOfMargins(&MarginControls::limitLabel);
  const platform::Object flag(required(tandemTrimValid_)->state() == platform::CheckBox::kOn);
  for (auto* component : components) component->changeState(flag);
}

void MorvaTTViewControllerKV2::controlTextDidChange(const platform::Notification& notification) {
  auto* textBox = dynamic_cast<MorvaTTTextBoxKV2*>(notification.object);
  if (textBox == nullptr) return;
  const platform::Object typed(platform::integerValue(TTVCDigitString(textBox->stringValue())));
  const auto* accepted = textBox->verifyValue(typed);
  if (accepted == nullptr) throw std::invalid_argument("a margin box has no range");
  textBox->setStringValue(accepted->stringValue());
  if (const auto ticketName = margin_entry::ticketName(textBox->identifier())) {
    ticket_->setMarginValue(*accepted, *ticketName);
  }
}

std::string MorvaTTViewControllerKV2::TTVCDigitString(std::string text) const {
  return margin_entry::digitString(std::move(text));
}

bool MorvaTTViewControllerKV2::TTVCIsDigitChar(std::string_view character) const {
  return margin_entry::isDigitChar(character);
}

}  // namespace tandemtrim
