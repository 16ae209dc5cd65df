#pragma once

#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/button.h>

#include "host/dialog/texts/sentence_list.hpp"

namespace tandemtrim::host {

/// A row that warns by a sentence for each problem, with a button that corrects them.
class WarningRow : public Gtk::Box {
 public:
  WarningRow();
  WarningRow(const WarningRow&) = delete;
  WarningRow& operator=(const WarningRow&) = delete;

  /// Shows the sentences, or nothing when there are none.
  void show(const std::vector<std::string>& sentences, bool canCorrect);
  /// The sentences, each on a line.
  [[nodiscard]] const std::string& text() const { return text_; }

  Gtk::Button correct;

 private:
  SentenceList sentences_;
  std::string text_;
};

}  // namespace tandemtrim::host
