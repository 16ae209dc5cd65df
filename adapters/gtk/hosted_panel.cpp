#include "adapters/gtk/hosted_panel.hpp"

namespace tandemtrim::platform::gtk {

PrintPanel& HostedPanel::upToDate() {
  if (view_ != nullptr) view_->flushEdits();
  return *panel_;
}

// The view is this platform's own.
View* HostedPanel::panelView() {
  view_ = static_cast<Panel*>(upToDate().panelView());
  return view_;
}

}  // namespace tandemtrim::platform::gtk
