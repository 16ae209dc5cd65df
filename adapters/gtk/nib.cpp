#include "platform/nib.hpp"

#include <filesystem>
#include <memory>
#include <string>

#include <dlfcn.h>
#include <gtkmm/init.h>

#include "adapters/gtk/panel.hpp"

namespace tandemtrim::platform {
namespace {

// The nib's path in the bundle to whose module this code belongs.
std::string nibPath(std::string_view name) {
  Dl_info module{};
  if (dladdr(reinterpret_cast<const void*>(&nibPath), &module) == 0) return {};
  const auto contents = std::filesystem::absolute(module.dli_fname).parent_path().parent_path();
  return contents / "Resources" / std::string(name).append(".ui");
}

// Uses the toolkit's C interface: the C++ classes need more set-up, and nothing here overrides them.
Glib::RefPtr<Gtk::Builder> loadDescription(const std::string& path) {
  auto* const builder = gtk_builder_new();
  auto description = Glib::wrap(builder);
  GError* error = nullptr;
  if (gtk_builder_add_from_file(builder, path.c_str(), &error) == FALSE) Glib::Error::throw_exception(error);
  return description;
}

}  // namespace

bool loadNibNamed(std::string_view name, NibOwner& owner) try {
  // Widgets need a screen.
  if (gdk_display_get_default() == nullptr) return false;
  Gtk::init_gtkmm_internals();
  auto panel = std::make_unique<gtk::Panel>(loadDescription(nibPath(name)), owner);
  auto& loaded = *panel;
  owner.keepLoadedNib(std::move(panel));
  loaded.connectOutlets(owner);
  return true;
} catch (const Glib::Error&) {
  return false;
}

}  // namespace tandemtrim::platform
