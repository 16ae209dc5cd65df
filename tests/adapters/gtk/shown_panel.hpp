#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "adapters/gtk/panel.hpp"
#include "adapters/linux/print_settings.hpp"
#include "platform/extension.hpp"
#include "tests/adapters/gtk/user.hpp"

namespace tandemtrim::test {

/// How a panel is shown.
struct Circumstances {
  std::string language = "en";
  bool dark = false;
  /// The factor by which texts are larger than usual.
  double textScale = 1;
  /// Shown in GTK's own print dialog, else in a plain window.
  bool inPrintDialog = false;
  /// The job's print settings.
  std::map<std::string, std::string> stored = {{"MVTandemTrim", "On"}};
};

/// The languages of the built bundle.
inline constexpr std::array kLanguages{BUNDLE_LANGUAGES};

/// The panel of the built bundle for the sample printer, on a page of a notebook, and a user in
/// front of it.
class ShownPanel {
 public:
  explicit ShownPanel(const Circumstances& circumstances = {});
  ShownPanel(const ShownPanel&) = delete;
  ShownPanel& operator=(const ShownPanel&) = delete;
  /// Destroys the window, then the panel.
  ~ShownPanel();

  [[nodiscard]] platform::PrintPanel& panel() { return *panel_; }
  [[nodiscard]] platform::View& view() { return *view_; }
  [[nodiscard]] GtkWidget* window() { return GTK_WIDGET(gtk_widget_get_root(root())); }
  [[nodiscard]] GtkWidget* root() { return GTK_WIDGET(view().toolkitView()); }
  [[nodiscard]] User& user() { return *user_; }
  /// The widget of this name in the nib; one that is missing raises std::out_of_range.
  [[nodiscard]] GtkWidget* widget(const std::string& name);
  /// The text of the entry of this name.
  [[nodiscard]] std::string text(const std::string& name);
  [[nodiscard]] std::optional<std::string> stored(const std::string& key) const;

  /// Destroys the panel and keeps the window.
  void dropPanel() { panel_.reset(); }

 private:
  class Job;

  std::shared_ptr<Job> job_;
  std::unique_ptr<platform::PrintPanel> panel_;
  platform::View* view_ = nullptr;
  std::unique_ptr<User> user_;
};

/// The first widget at or below `root` for which `fits` is true, or null.
GtkWidget* findWidget(GtkWidget* root, const std::function<bool(GtkWidget*)>& fits);

/// All widgets at and below `root` of this type.
std::vector<GtkWidget*> widgetsOf(GtkWidget* root, GType type);

}  // namespace tandemtrim::test
