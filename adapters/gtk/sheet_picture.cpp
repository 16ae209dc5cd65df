#include "adapters/gtk/sheet_picture.hpp"

#include <cmath>
#include <string_view>
#include <utility>

#include "adapters/gtk/sheet_drawing.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::gtk {
namespace {

// The feed or position that belongs to the chosen item; nullopt if no item is chosen.
template <class Part, std::size_t count>
std::optional<Part> chosen(PopUpButton& menu,
                           const std::array<std::pair<std::string_view, Part>, count>& parts) {
  const auto* const item = menu.selectedItem();
  const auto name = item == nullptr ? std::nullopt : item->representedObject();
  for (const auto& [partName, part] : parts) {
    if (name == partName) return part;
  }
  return std::nullopt;
}

constexpr std::array<std::pair<std::string_view, Feed>, 2> kFeeds{
    {{TTVCPopUpNameDirectionLEF, Feed::longEdge}, {TTVCPopUpNameDirectionSEF, Feed::shortEdge}}};
constexpr std::array<std::pair<std::string_view, Position>, 3> kPositions{
    {{TTVCPopUpNamePositionLeft, Position::left},
     {TTVCPopUpNamePositionCenter, Position::center},
     {TTVCPopUpNamePositionRight, Position::right}}};

const std::string kBetweenParts = "; ";

std::string filled(std::string text, std::string_view placeholder, const std::string& filling) {
  if (const auto place = text.find(placeholder); place != std::string::npos)
    text.replace(place, placeholder.size(), filling);
  return text;
}

// Reserves space for all lines that the label may have, since a window that grows closes its open menus.
void reserveLines(Gtk::Label& label) {
  constexpr int kMoreThanFits = 500;
  label.set_text(Glib::ustring(kMoreThanFits, 'm'));
  label.set_visible();
  int width = 0;
  int height = 0;
  int ignored = 0;
  label.measure(Gtk::Orientation::HORIZONTAL, -1, width, ignored, ignored, ignored);
  label.measure(Gtk::Orientation::VERTICAL, width, height, ignored, ignored, ignored);
  label.set_visible(false);
  label.set_text("");
  label.get_parent()->set_size_request(-1, height);
}

// The number in the text as it is shown, also while it is being edited.
double millimetres(const Labelled<TextBox>& margin) {
  return static_cast<double>(integerValue(margin.control->widget().get_text().raw()));
}

}  // namespace

SheetPicture::SheetPicture(Gtk::DrawingArea& area, SheetControls controls, Texts texts)
    : area_(area),
      controls_(controls),
      texts_(std::move(texts)),
      paperWidth_(Sheet{}.width),
      paperHeight_(Sheet{}.height) {
  const auto refreshing = sigc::mem_fun(*this, &SheetPicture::refresh);
  const auto follow = [&](const TextLabel& label) {
    label.widget().property_label().signal_changed().connect(refreshing);
  };
  for (const auto* menu : {&controls_.direction, &controls_.position}) {
    menu->control->setChanged([this] { refresh(); });
    follow(*menu->label);
  }
  for (const auto& margin : controls_.margins) {
    margin.control->widget().signal_changed().connect(refreshing);
    follow(*margin.label);
  }
  reserveLines(controls_.note->widget());
  area_.signal_state_flags_changed().connect(sigc::hide(refreshing));
  area_.set_draw_func(sigc::mem_fun(*this, &SheetPicture::draw));
}

void SheetPicture::setPaperSize(double width, double height) {
  if (!(std::isfinite(width) && std::isfinite(height) && width > 0 && height > 0)) return;
  paperWidth_ = width;
  paperHeight_ = height;
  refresh();
}

void SheetPicture::showPage(std::shared_ptr<const PageImage> page) {
  if (page == page_) return;
  page_ = std::move(page);
  refresh();
}

void SheetPicture::refresh() {
  area_.queue_draw();
  const auto noted = note();
  auto& label = controls_.note->widget();
  label.set_text(noted);
  label.set_tooltip_text(noted);
  // Removes the description, which the tooltip has set; a screen reader would read the note twice.
  gtk_accessible_reset_property(GTK_ACCESSIBLE(label.gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION);
  label.set_visible(!noted.empty());
  gtk_accessible_update_property(GTK_ACCESSIBLE(area_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 description(noted).c_str(), -1);
}

Sheet SheetPicture::sheet() const {
  const auto& margins = controls_.margins;
  const auto page =
      page_ ? std::optional(SheetPage{page_->left, page_->top, page_->width, page_->height, page_->empty})
            : std::nullopt;
  return {.width = paperWidth_,
          .height = paperHeight_,
          .top = millimetres(margins[kTop]),
          .bottom = millimetres(margins[kBottom]),
          .left = millimetres(margins[kLeft]),
          .right = millimetres(margins[kRight]),
          .feed = chosen(*controls_.direction.control, kFeeds),
          .position = chosen(*controls_.position.control, kPositions),
          .page = page};
}

void SheetPicture::draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) const {
  drawSheet(*cairo, layOut(sheet(), width, height), page_.get(), sheetColoursOf(area_));
}

// Built from the panel's texts, so that it is in the user's language.
std::string SheetPicture::description(const std::string& noted) const {
  const auto length = [](double value) { return std::to_string(std::lround(value)); };
  auto text = length(paperWidth_) + " × " + length(paperHeight_) + " mm";
  const auto add = [&](const TextLabel& label, const std::string& value) {
    text += kBetweenParts + label.stringValue() + ' ' + value;
  };
  for (const auto* menu : {&controls_.direction, &controls_.position})
    add(*menu->label, menu->control->chosenTitle());
  for (const auto& margin : controls_.margins)
    add(*margin.label, margin.control->widget().get_text().raw() + " mm");
  for (const auto& part : {page_ ? page_->name : std::string(), noted}) {
    if (!part.empty()) text += kBetweenParts + part;
  }
  return text;
}

std::string SheetPicture::note() const {
  std::string margins;
  if (!area_.is_sensitive()) return margins;
  const auto depths = contentInMargins(sheet());
  for (std::size_t side = 0; side < kSides; ++side) {
    if (depths.at(side) == 0) continue;
    const auto margin = filled(texts_(kContentInMarginKey), "[margin]", texts_(marginsOf(kTitleKeys)[side]));
    margins +=
        (margins.empty() ? "" : kBetweenParts) + filled(margin, "[depth]", std::to_string(depths.at(side)));
  }
  return margins.empty() ? margins : filled(texts_(kContentInMarginsKey), "[margins]", margins);
}

}  // namespace tandemtrim::platform::gtk
