#include "host/dialog/dialog_window.hpp"

#include <algorithm>
#include <utility>

#include <glibmm/regex.h>
#include <gtk/gtkunixprint.h>
#include <gtkmm/settings.h>

#include "host/dialog/texts/sentence_list.hpp"
#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kLineMargin = 12;
constexpr int kNoticeSpacing = 12;
constexpr int kProgressSpacing = 6;

Glib::ustring knownBackends() {
  gchar* known = nullptr;
  g_object_get(Gtk::Settings::get_default()->gobj(), "gtk-print-backends", &known, nullptr);
  Glib::ustring backends = known;
  g_free(known);
  return backends;
}

// GTK finds printers, and offers printing to a file, by backends that it loads with each dialog.
void setBackends(bool withFiles) {
  static const auto known = knownBackends();
  std::string backends;
  for (const auto& backend : Glib::Regex::split_simple(",", known)) {
    if (withFiles || backend != "file") backends += (backends.empty() ? "" : ",") + backend;
  }
  g_object_set(Gtk::Settings::get_default()->gobj(), "gtk-print-backends", backends.c_str(), nullptr);
}

Glib::ustring titleOnceBackendsAreSet(const std::vector<FileFormat>& fileFormats) {
  setBackends(!fileFormats.empty());
  return g_dgettext("gtk40", "Print");
}

// GTK offers only the formats that the program declares; if it declares none, all formats including SVG.
Gtk::PrintCapabilities capabilitiesFor(const std::vector<FileFormat>& fileFormats, bool canScale) {
  auto capabilities = Gtk::PrintCapabilities::PAGE_SET;
  if (canScale) capabilities |= Gtk::PrintCapabilities::SCALE;
  if (std::ranges::count(fileFormats, FileFormat::svg) != 0) return capabilities;
  for (const auto format : fileFormats) {
    capabilities |= format == FileFormat::pdf ? Gtk::PrintCapabilities::GENERATE_PDF
                                              : Gtk::PrintCapabilities::GENERATE_PS;
  }
  return capabilities;
}

}  // namespace

DialogWindow::DialogWindow(const std::vector<FileFormat>& fileFormats, bool canScale)
    : dialog_(titleOnceBackendsAreSet(fileFormats)),
      notice_(*Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kNoticeSpacing)),
      noticeText_(*Gtk::make_managed<Gtk::Label>()),
      progress_(*Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kNoticeSpacing)),
      progressText_(*Gtk::make_managed<Gtk::Label>()),
      progressBar_(*Gtk::make_managed<Gtk::ProgressBar>()) {
  dialog_.set_transient_for(parent_);
  // Escape and the window's close button only hide it, since its tabs are still in use then.
  dialog_.set_hide_on_close();
  dialog_.set_manual_capabilities(capabilitiesFor(fileFormats, canScale));
  group_->add_window(dialog_);
  dialog_.set_embed_page_setup();
  auto& again = *Gtk::make_managed<Gtk::Button>(localized(kTryAgainText), true);
  again.set_valign(Gtk::Align::CENTER);
  again.signal_clicked().connect([this] {
    hideNotice();
    tryAgain_();
  });
  noticeText_.set_hexpand();
  notice_.append(noticeText_);
  notice_.append(again);
  addLine(notice_, noticeText_);
  makeProgress();
  addLine(progress_, progressText_);
  dialog_.get_widget_for_response(Gtk::ResponseType::OK)
      ->property_sensitive()
      .signal_changed()
      .connect(sigc::mem_fun(*this, &DialogWindow::onPrintLive));
}

DialogWindow::~DialogWindow() { g_clear_weak_pointer(&focused_); }

// The button has an icon, since GTK's own button Cancel has the access key of that title.
void DialogWindow::makeProgress() {
  auto& column = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, kProgressSpacing);
  column.set_hexpand();
  column.append(progressText_);
  column.append(progressBar_);
  gtk_accessible_update_relation(GTK_ACCESSIBLE(progressBar_.gobj()), GTK_ACCESSIBLE_RELATION_LABELLED_BY,
                                 progressText_.gobj(), nullptr, -1);
  auto& cancel = *Gtk::make_managed<Gtk::Button>();
  cancel.set_icon_name("process-stop-symbolic");
  cancel.set_valign(Gtk::Align::CENTER);
  const auto title = localized(kCancelJobText);
  cancel.set_tooltip_text(title);
  gtk_accessible_update_property(GTK_ACCESSIBLE(cancel.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, title.c_str(),
                                 -1);
  cancel.signal_clicked().connect([this] { dialog_.response(Gtk::ResponseType::CANCEL); });
  progress_.append(column);
  progress_.append(cancel);
}

void DialogWindow::showProgress(const std::string& text, std::optional<double> share) {
  progressText_.set_text(text);
  if (share) {
    progressBar_.set_fraction(*share);
  } else {
    progressBar_.pulse();
  }
}

void DialogWindow::addLine(Gtk::Box& line, Gtk::Label& text) {
  text.set_wrap();
  text.set_xalign(0);
  line.set_margin(kLineMargin);
  line.set_visible(false);
  dialog_.get_content_area()->append(line);
}

void DialogWindow::showNotice(const std::string& text, std::function<void()> tryAgain) {
  noticeText_.set_text(directed(notice_, text));
  tryAgain_ = std::move(tryAgain);
  notice_.set_visible();
}

void DialogWindow::enter(DialogState state) {
  const auto before = liveIn(std::exchange(state_, state));
  const auto live = liveIn(state);
  if (live.print != before.print) setPrintLive(live.print);
  if (live.content != before.content) setContentLive(live.content);
}

void DialogWindow::proceed(DialogState state) { enter(liveIn(state_).printWaits ? withPrint(state) : state); }

void DialogWindow::giveUpPrint() {
  if (!liveIn(state_).printWaits) return;
  enter(withoutPrint(state_));
  auto* const printer = gtk_print_unix_dialog_get_selected_printer(dialog_.gobj());
  if (printer != nullptr && gtk_printer_is_accepting_jobs(printer) == FALSE) setPrintLive(false);
}

// GTK enables Print at every change of its printer, in any state of the dialog. In a header bar a button that
// was disabled is no longer the default one.
void DialogWindow::onPrintLive() {
  dialog_.set_default_response(Gtk::ResponseType::OK);
  if (!liveIn(state_).print) setPrintLive(false);
}

// GTK leaves the focus, and a blinking cursor, in a disabled entry. Without a focus no key has an effect, so
// that a second Enter does not cancel the job.
void DialogWindow::setContentLive(bool isLive) {
  if (!isLive) {
    g_set_weak_pointer(&focused_, gtk_window_get_focus(GTK_WINDOW(dialog_.gobj())));
    dialog_.unset_focus();
  }
  for (auto* child = dialog_.get_content_area()->get_first_child(); child != nullptr;
       child = child->get_next_sibling())
    child->set_sensitive(isLive || child == &progress_);
  if (isLive && focused_ != nullptr) gtk_widget_grab_focus(focused_);
  showProgress(localized(kSendingText), 0);
  progress_.set_visible(!isLive);
}

}  // namespace tandemtrim::host
