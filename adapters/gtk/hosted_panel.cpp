#include "adapters/gtk/hosted_panel.hpp"

namespace tandemtrim::platform::gtk {

PrintPanel& HostedPanel::upToDate() {
  if (view_ != nullptr) view_->flushEdits();
  return *panel_;
}

// On this platform the view is always a Panel.
View* HostedPanel::panelView() {
  view_ = static_cast<Panel*>(upToDate().panelView());
  return view_;
}

}  // namespace tandemtrim::platform::gtk
