#pragma once

#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/button.h>

#include "host/dialog/texts/sentence_list.hpp"

namespace tandemtrim::host {

/// A row that warns by a sentence for each problem, with a button that corrects them. A screen reader speaks
/// no row that appears, so the sentences also describe the control of the page that has the focus when they
/// change, or the next one.
class WarningRow : public Gtk::Box {
 public:
  /// Below this page.
  explicit WarningRow(Gtk::Widget& page);
  WarningRow(const WarningRow&) = delete;
  WarningRow& operator=(const WarningRow&) = delete;
  ~WarningRow() override;

  /// Shows the sentences, or nothing when there are none.
  void show(const std::vector<std::string>& sentences, bool canCorrect);

  Gtk::Button correct;

 private:
  void describeFocused();
  void describeNothing();

  Gtk::Widget& page_;
  SentenceList sentences_;
  // What the row says.
  std::string text_;
  // What it describes; null when nothing.
  GtkWidget* described_ = nullptr;
};

}  // namespace tandemtrim::host
