#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtkmm/builder.h>

#include "adapters/gtk/sheet_picture.hpp"
#include "platform/nib.hpp"

namespace tandemtrim::platform::gtk {

/// A loaded nib: its widgets, the controls around them and the panel's view. The widgets live as long as it,
/// and longer in a window that contains the view; they then do nothing.
class Panel : public LoadedNib, public View, public sigc::trackable {
 public:
  /// Wraps the description's objects that have the name of an outlet.
  Panel(Glib::RefPtr<Gtk::Builder> description, NibOwner& owner);
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  /// Connects the outlets for which the description has an object of a known class.
  void connectOutlets(NibOwner& owner);

  /// The view's GtkWidget, or null when the description does not have it.
  [[nodiscard]] void* toolkitView() override;
  /// Sets the paper size of the picture of the sheet.
  void setPaperSize(double width, double height) override;
  /// Shows the page in the picture of the sheet.
  void showPage(const std::shared_ptr<const PageImage>& page) override;
  /// The picture's note about that page.
  [[nodiscard]] std::string pageNote() const override;
  /// Posts the user's pending edits.
  void flushEdits() const;
  /// The control of this outlet, or null.
  [[nodiscard]] NibObject* control(std::string_view outlet) const;

 private:
  [[nodiscard]] GObject* object(std::string_view name) const;
  [[nodiscard]] std::unique_ptr<NibObject> wrap(std::string_view outlet) const;
  [[nodiscard]] std::vector<std::string> itemsOf(std::string_view menu) const;
  void connectSteppers() const;
  void connectActions(NibOwner& owner) const;
  void connectPicture(const NibOwner& owner);
  void showAccessKeys(const NibOwner& owner) const;
  template <class Class>
  [[nodiscard]] Class* controlOf(std::string_view outlet) const {
    return dynamic_cast<Class*>(control(outlet));
  }

  Glib::RefPtr<Gtk::Builder> description_;
  Gtk::Widget* view_;
  std::map<std::string, std::unique_ptr<NibObject>, std::less<>> controls_;
  std::unique_ptr<TextLabel> pageNote_;
  std::unique_ptr<SheetPicture> picture_;
};

}  // namespace tandemtrim::platform::gtk
