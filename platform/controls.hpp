#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::platform {

/// Anything that a nib instantiates and an outlet can refer to. It belongs to the loaded nib.
class NibObject {
 public:
  virtual ~NibObject() = default;
};

/// A page of the document as it lies on the sheet: its pixels row by row, each 0xRRGGBB with an unused upper
/// byte, and the place and size in millimetres where it is printed. It may reach beyond the sheet.
struct PageImage {
  int columns;
  int rows;
  std::vector<std::uint32_t> pixels;
  /// Distances from the sheet's left and top edge.
  double left;
  double top;
  double width;
  double height;
  /// The width of the empty strip at each edge, in millimetres: top, bottom, left, right; nullopt when the
  /// whole page is empty.
  std::optional<std::array<double, 4>> empty;
  /// The page's name in the user's language ("Page 2 of 5"), for screen readers.
  std::string name = {};
};

/// A panel's top-level view.
class View : public NibObject {
 public:
  /// The toolkit's own view, for a host of the same toolkit; null where there is no toolkit.
  [[nodiscard]] virtual void* toolkitView() { return nullptr; }
  /// Sets the size of the chosen paper in millimetres; the host calls it whenever it learns the size. A view
  /// that draws no sheet ignores it.
  virtual void setPaperSize(double /*width*/, double /*height*/) {}
  /// Shows this page on the sheet, or no page for null. A view that draws no sheet ignores it.
  virtual void showPage(const std::shared_ptr<const PageImage>& /*page*/) {}
  /// The view's current note about that page, in the user's language; may be empty.
  [[nodiscard]] virtual std::string pageNote() const { return {}; }
};

/// The operations of every control. Changes made through them run no action and post no notification.
class Control : public NibObject {
 public:
  virtual void setEnabled(bool enabled) = 0;
  [[nodiscard]] virtual std::string stringValue() const = 0;
  virtual void setStringValue(std::string_view text) = 0;
};

/// The two text colours of a label; a platform shows them as its theme's normal and dimmed text colour.
enum class Color { blackColor, lightGrayColor };

class TextLabel : public Control {
 public:
  virtual void setTextColor(Color color) = 0;
};

/// A control with a name by which the program identifies it; empty until it is set.
class IdentifiedControl : public Control {
 public:
  virtual void setIdentifier(std::string_view identifier) = 0;
  [[nodiscard]] virtual std::string identifier() const = 0;
};

/// An editable text field. It posts NSControlTextDidChangeNotification after each edit by the user.
class TextBox : public IdentifiedControl {};

class Stepper : public IdentifiedControl {
 public:
  virtual void setMinValue(double value) = 0;
  virtual void setMaxValue(double value) = 0;
};

class Button : public Control {
 public:
  virtual void setTitle(std::string_view title) = 0;
};

class CheckBox : public Button {
 public:
  static constexpr int kOn = 1;
  static constexpr int kOff = 0;
  static constexpr int kMixed = -1;

  [[nodiscard]] virtual int state() const = 0;
  virtual void setState(int state) = 0;
};

class MenuItem {
 public:
  virtual ~MenuItem() = default;
  virtual void setTitle(std::string_view title) = 0;
  /// The value that the program attached to the item, or nullopt.
  [[nodiscard]] virtual std::optional<std::string> representedObject() const = 0;
  virtual void setRepresentedObject(std::string_view value) = 0;
};

/// A menu. It owns its items, of which at most one is selected.
class PopUpButton : public Control {
 public:
  [[nodiscard]] virtual std::size_t numberOfItems() const = 0;
  [[nodiscard]] virtual MenuItem& itemAtIndex(std::size_t index) = 0;
  /// The selected item, or null when no item is selected.
  [[nodiscard]] virtual MenuItem* selectedItem() = 0;
  /// Selects the first item with this title; if there is no such item, no item is selected.
  virtual void selectItemWithTitle(std::string_view title) = 0;
};

}  // namespace tandemtrim::platform
