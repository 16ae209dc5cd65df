#include "host/dialog/gtk/parent_window.hpp"

#include <charconv>
#include <optional>
#include <string_view>

#include <X11/Xatom.h>
#include <gdk/wayland/gdkwayland.h>
#include <gdk/x11/gdkx.h>

namespace tandemtrim::host {
namespace {

std::optional<unsigned> numberOf(std::string_view digits) {
  constexpr int kHexadecimal = 16;
  unsigned number = 0;
  const auto* const end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, number, kHexadecimal);
  return read.ec == std::errc() && read.ptr == end && number != 0 ? std::optional(number) : std::nullopt;
}

// GTK 4 no longer has functions for windows of other programs.
void setParentByX(GdkSurface* surface, Window parent) {
  auto* const screen = gdk_surface_get_display(surface);
  auto* const server = gdk_x11_display_get_xdisplay(screen);
  const auto window = gdk_x11_surface_get_xid(surface);
  XSetTransientForHint(server, window, parent);
  const Atom dialog = gdk_x11_get_xatom_by_name_for_display(screen, "_NET_WM_WINDOW_TYPE_DIALOG");
  XChangeProperty(server, window, gdk_x11_get_xatom_by_name_for_display(screen, "_NET_WM_WINDOW_TYPE"),
                  XA_ATOM, 32, PropModeReplace, reinterpret_cast<const unsigned char*>(&dialog), 1);
}

}  // namespace

void setParentOfOtherProgram(Gtk::Window& window, const std::string& parent) {
  constexpr std::string_view kOfX = "x11:";
  constexpr std::string_view kOfWayland = "wayland:";
  gtk_widget_realize(GTK_WIDGET(window.gobj()));
  auto* const surface = gtk_native_get_surface(GTK_NATIVE(window.gobj()));
  if (GDK_IS_X11_SURFACE(surface) && parent.starts_with(kOfX)) {
    if (const auto number = numberOf(parent.substr(kOfX.size()))) setParentByX(surface, *number);
  } else if (GDK_IS_WAYLAND_TOPLEVEL(surface) && parent.starts_with(kOfWayland)) {
    gdk_wayland_toplevel_set_transient_for_exported(GDK_TOPLEVEL(surface),
                                                    parent.c_str() + kOfWayland.size());
  }
}

}  // namespace tandemtrim::host
