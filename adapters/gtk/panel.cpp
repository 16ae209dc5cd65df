#include "adapters/gtk/panel.hpp"

#include <utility>

#include "adapters/gtk/controls/access_key.hpp"
#include "adapters/gtk/controls/controls.hpp"
#include "adapters/gtk/controls/menus.hpp"
#include "adapters/gtk/controls/stepper.hpp"
#include "adapters/gtk/controls/text_box.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::platform::gtk {
namespace {

constexpr std::string_view kView = "tandemTrimView";

}  // namespace

Panel::Panel(Glib::RefPtr<Gtk::Builder> description, NibOwner& owner)
    : description_(std::move(description)),
      view_(GTK_IS_WIDGET(object(kView)) ? Glib::wrap(GTK_WIDGET(object(kView))) : nullptr) {
  for (const auto outlet : owner.outletNames()) {
    if (outlet == kView) continue;
    if (auto control = wrap(outlet)) controls_.emplace(outlet, std::move(control));
  }
  connectSteppers();
  connectActions(owner);
  connectPicture(owner);
  if (view_ != nullptr) {
    view_->signal_map().connect(sigc::track_obj(
        [this, &owner, isDone = false]() mutable {
          if (!std::exchange(isDone, true)) showAccessKeys(owner);
        },
        *this));
  }
}

GObject* Panel::object(std::string_view name) const {
  return gtk_builder_get_object(description_->gobj(), std::string(name).c_str());
}

// The class of the widget determines the class of the control.
std::unique_ptr<NibObject> Panel::wrap(std::string_view outlet) const {
  auto* const found = object(outlet);
  if (GTK_IS_LABEL(found)) return std::make_unique<TextLabel>(*Glib::wrap(GTK_LABEL(found)));
  if (GTK_IS_SPIN_BUTTON(found)) return std::make_unique<TextBox>(*Glib::wrap(GTK_SPIN_BUTTON(found)));
  if (GTK_IS_ADJUSTMENT(found)) return std::make_unique<Stepper>(Glib::wrap(GTK_ADJUSTMENT(found), true));
  if (GTK_IS_MENU_BUTTON(found))
    return std::make_unique<PopUpButton>(*Glib::wrap(GTK_MENU_BUTTON(found)), itemsOf(outlet));
  if (GTK_IS_CHECK_BUTTON(found)) return std::make_unique<CheckBox>(*Glib::wrap(GTK_CHECK_BUTTON(found)));
  if (GTK_IS_BUTTON(found)) return std::make_unique<Button>(*Glib::wrap(GTK_BUTTON(found)));
  return nullptr;
}

// The titles are in a list of the nib, named after the menu.
std::vector<std::string> Panel::itemsOf(std::string_view menu) const {
  auto* const list = object(std::string(menu).append("Items"));
  std::vector<std::string> titles;
  for (guint index = 0; GTK_IS_STRING_LIST(list) && index < g_list_model_get_n_items(G_LIST_MODEL(list));
       ++index)
    titles.emplace_back(gtk_string_list_get_string(GTK_STRING_LIST(list), index));
  return titles;
}

void Panel::connectSteppers() const {
  for (const auto& margin : kMarginOutlets) {
    auto* stepper = controlOf<Stepper>(margin.stepper);
    auto* textBox = controlOf<TextBox>(margin.textBox);
    if (stepper != nullptr && textBox != nullptr) stepper->setTextBox(textBox);
    const auto* limits = controlOf<TextLabel>(margin.limitLabel);
    if (textBox != nullptr && limits != nullptr) textBox->setLimitLabel(GTK_WIDGET(limits->widget().gobj()));
  }
}

void Panel::flushEdits() const {
  for (const auto& margin : kMarginOutlets) {
    if (auto* textBox = controlOf<TextBox>(margin.textBox)) textBox->flush();
  }
}

void Panel::connectActions(NibOwner& owner) const {
  const auto actionOf = [&owner](std::string_view action) {
    return [&owner, action](NibObject* sender) { owner.performAction(action, sender); };
  };
  if (auto* check = controlOf<CheckBox>("tandemTrimValid"))
    check->setAction(actionOf("changeTandemTrimValid:"));
  if (auto* button = controlOf<Button>("defaultButton")) button->setAction(actionOf("setDefaultValue:"));
}

void Panel::connectPicture(const NibOwner& owner) {
  auto* const area = object("sheetPicture");
  bool complete = GTK_IS_DRAWING_AREA(area);
  const auto labelled = [&]<class Class>(Labelled<Class>& pair, std::string_view label,
                                         std::string_view control) {
    pair = {controlOf<TextLabel>(label), controlOf<Class>(control)};
    complete = complete && pair.label != nullptr && pair.control != nullptr;
  };
  SheetControls shown{};
  labelled(shown.direction, "labelDirection", "directionPopUp");
  labelled(shown.position, "labelPosition", "positionPopUp");
  for (std::size_t side = 0; side < kSides; ++side)
    labelled(shown.margins.at(side), kMarginOutlets.at(side).label, kMarginOutlets.at(side).textBox);
  auto* const note = object("pageNote");
  if (!complete || !GTK_IS_LABEL(note)) return;
  pageNote_ = std::make_unique<TextLabel>(*Glib::wrap(GTK_LABEL(note)));
  shown.note = pageNote_.get();
  picture_ =
      std::make_unique<SheetPicture>(*Glib::wrap(GTK_DRAWING_AREA(area)), shown,
                                     [&owner](std::string_view key) { return owner.localizedString(key); });
}

// Called when the view is first shown: the controller has set the titles by then.
void Panel::showAccessKeys(const NibOwner& owner) const {
  const auto show = [&](std::string_view outlet, std::string_view title) {
    const Glib::ustring letter = owner.localizedString(std::string(title).append(kAccessKeySuffix));
    auto* const control = controlOf<AccessKeyed>(outlet);
    if (control != nullptr && letter.validate() && letter.size() == 1) control->setAccessKey(letter[0]);
  };
  show("tandemTrimValid", TTVCLabelNameValid);
  show("labelDirection", TTVCLabelNameImageDirection);
  show("labelPosition", TTVCLabelNamePosition);
  for (std::size_t side = 0; side < kSides; ++side)
    show(kMarginOutlets.at(side).label, marginsOf(kTitleKeys)[side]);
  show("defaultButton", TTVCLabelNameRestoreDefault);
}

void Panel::setPaperSize(double width, double height) {
  if (picture_) picture_->setPaperSize(width, height);
}

void Panel::showPage(const std::shared_ptr<const PageImage>& page) {
  if (picture_) picture_->showPage(page);
}

std::string Panel::pageNote() const { return picture_ ? picture_->note() : std::string(); }

void Panel::connectOutlets(NibOwner& owner) {
  for (const auto& [outlet, control] : controls_) owner.setOutlet(outlet, control.get());
  if (view_ != nullptr) owner.setOutlet(kView, this);
}

void* Panel::toolkitView() { return view_ == nullptr ? nullptr : view_->gobj(); }

NibObject* Panel::control(std::string_view outlet) const {
  const auto control = controls_.find(outlet);
  return control == controls_.end() ? nullptr : control->second.get();
}

}  // namespace tandemtrim::platform::gtk
