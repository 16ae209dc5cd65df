#include "tests/adapters/gtk/shown_panel.hpp"

#include <stdexcept>

#include <cups/ppd.h>
#include <gtk/gtkunixprint.h>

#include "adapters/linux/bundle.hpp"
#include "adapters/module/plugin.hpp"

namespace tandemtrim::test {
namespace {

void setUpToolkit(const Circumstances& circumstances) {
  gtk_init();
  constexpr double kUsualDpi = 96 * 1024;
  g_object_set(gtk_settings_get_default(), "gtk-application-prefer-dark-theme", circumstances.dark,
               "gtk-xft-dpi", static_cast<int>(kUsualDpi * circumstances.textScale), "gtk-enable-animations",
               FALSE, "gtk-cursor-blink", FALSE, nullptr);
  gtk_widget_set_default_direction(circumstances.language == "ar" ? GTK_TEXT_DIR_RTL : GTK_TEXT_DIR_LTR);
}

constexpr int kWidthOfPrintDialog = 620;

GtkWindow* windowAround(GtkWidget* view, const std::string& title, bool printDialog) {
  auto* const label = gtk_label_new(title.c_str());
  if (printDialog) {
    auto* const dialog = gtk_print_unix_dialog_new("Print", nullptr);
    gtk_print_unix_dialog_add_custom_tab(GTK_PRINT_UNIX_DIALOG(dialog), view, label);
    auto* const notebook = gtk_widget_get_ancestor(view, GTK_TYPE_NOTEBOOK);
    gtk_notebook_set_current_page(GTK_NOTEBOOK(notebook),
                                  gtk_notebook_page_num(GTK_NOTEBOOK(notebook), view));
    return GTK_WINDOW(dialog);
  }
  auto* const notebook = gtk_notebook_new();
  gtk_notebook_append_page(GTK_NOTEBOOK(notebook), view, label);
  auto* const window = gtk_window_new();
  gtk_window_set_default_size(GTK_WINDOW(window), kWidthOfPrintDialog, -1);
  gtk_window_set_child(GTK_WINDOW(window), notebook);
  return GTK_WINDOW(window);
}

}  // namespace

class ShownPanel::Job : public platform::HostCallback {
 public:
  platform::PrintSettings* printSettings() override { return &settings; }
  ppd_file_s* ppdFile() override { return ppd_.get(); }

  platform::linux::PrintSettings settings;

 private:
  std::unique_ptr<ppd_file_t, decltype(&ppdClose)> ppd_{ppdOpenFile(SAMPLE_PPD), &ppdClose};
};

ShownPanel::ShownPanel(const Circumstances& circumstances) : job_(std::make_shared<Job>()) {
  setUpToolkit(circumstances);
  for (const auto& [key, value] : circumstances.stored)
    job_->settings.PMPrintSettingsSetValue(key, value, false);

  std::string reason;
  const auto plugin = platform::makePlugin();
  if (!plugin->initWithBundle(platform::linux::Bundle::open(BUNDLE, reason, {circumstances.language})))
    throw std::runtime_error(reason);
  panel_ = std::move(plugin->PDEPanelsForType(platform::kPrintDialogExtensionType, job_)->front());
  view_ = panel_->panelView();
  panel_->willShow();
  user_ = std::make_unique<User>(windowAround(root(), panel_->panelName(), circumstances.inPrintDialog));
}

ShownPanel::~ShownPanel() { user_.reset(); }

GtkWidget* ShownPanel::widget(const std::string& name) {
  auto* const found = findWidget(root(), [&](GtkWidget* widget) {
    const char* const own = gtk_buildable_get_buildable_id(GTK_BUILDABLE(widget));
    return own != nullptr && name == own;
  });
  if (found == nullptr) throw std::out_of_range("the panel has no widget " + name);
  return found;
}

std::string ShownPanel::text(const std::string& name) {
  return gtk_editable_get_text(GTK_EDITABLE(widget(name)));
}

std::optional<std::string> ShownPanel::stored(const std::string& key) const {
  std::optional<std::string> value;
  job_->settings.PMPrintSettingsGetValue(key, value);
  return value;
}

GtkWidget* findWidget(GtkWidget* root, const std::function<bool(GtkWidget*)>& fits) {
  if (fits(root)) return root;
  for (auto* child = gtk_widget_get_first_child(root); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (auto* const found = findWidget(child, fits)) return found;
  }
  return nullptr;
}

std::vector<GtkWidget*> widgetsOf(GtkWidget* root, GType type) {
  std::vector<GtkWidget*> found;
  findWidget(root, [&](GtkWidget* widget) {
    if (g_type_is_a(G_OBJECT_TYPE(widget), type) != FALSE) found.push_back(widget);
    return false;
  });
  return found;
}

}  // namespace tandemtrim::test
