#include "host/dialog/texts/sentence_list.hpp"

#include <algorithm>

#include <gtkmm/label.h>

namespace tandemtrim::host {
namespace {

constexpr int kSentenceSpacing = 6;

}  // namespace

std::string directed(const Gtk::Widget& widget, const std::string& text) {
  if (widget.get_direction() != Gtk::TextDirection::RTL) return text;
  constexpr const char* kRightToLeftMark = "\u200F";
  std::string marked = kRightToLeftMark;
  for (const char character : text) {
    marked += character;
    if (character == '\n') marked += kRightToLeftMark;
  }
  return marked;
}

SentenceList::SentenceList(int mostHeight)
    : mostHeight_(mostHeight),
      box_(*Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, kSentenceSpacing)) {
  set_child(box_);
  set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
}

void SentenceList::show(const std::vector<std::string>& sentences, int mostCharacters) {
  while (auto* const child = box_.get_first_child()) box_.remove(*child);
  for (const auto& sentence : sentences) {
    auto* const label = Gtk::make_managed<Gtk::Label>(directed(*this, sentence));
    label->set_wrap();
    label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label->set_max_width_chars(mostCharacters);
    label->set_xalign(0);
    box_.append(*label);
  }
}

// The base class measures lines as if they were never wrapped.
Gtk::SizeRequestMode SentenceList::get_request_mode_vfunc() const {
  return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH;
}

void SentenceList::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                                 int& minimumBaseline, int& naturalBaseline) const {
  const bool isWidth = orientation == Gtk::Orientation::HORIZONTAL;
  // For a given height, the toolkit measures wrapped lines differently.
  box_.measure(orientation, isWidth ? -1 : forSize, minimum, natural, minimumBaseline, naturalBaseline);
  minimumBaseline = naturalBaseline = -1;
  if (!isWidth) minimum = natural = std::min(natural, mostHeight_);
  if (isWidth && !get_propagate_natural_width()) natural = minimum;
}

}  // namespace tandemtrim::host
