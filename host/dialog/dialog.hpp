#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <glibmm/main.h>
#include <gtkmm/grid.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/printunixdialog.h>

#include "adapters/linux/print_settings.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/sent_job.hpp"
#include "host/dialog/background.hpp"
#include "host/dialog/order.hpp"
#include "host/dialog/panel_page.hpp"
#include "host/dialog/settings/dialog_options.hpp"
#include "host/job/command_line.hpp"
#include "host/note.hpp"
#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// GTK's print dialog with the panel of the chosen printer as a page of it. It works on settings of its own,
/// which are gone when the dialog is cancelled.
class Dialog {
 public:
  /// Opens the documents; Failure when one of them cannot be read.
  Dialog(const CommandLine& line, Note note);
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;
  ~Dialog();

  /// Shows the dialog until the person prints or cancels; the job that was sent, or none.
  std::optional<SentJob> run();

 private:
  /// What is read of a printer before its panel can be shown.
  struct Details {
    Printer printer;
    PpdHandle ppd;
  };
  // Runs off the user-interface thread.
  [[nodiscard]] static std::shared_ptr<Details> detailsOf(const std::optional<std::string>& server,
                                                          const std::optional<std::string>& printer);
  [[nodiscard]] std::string selectedPrinter() const;
  void begin();
  void start();
  [[nodiscard]] Options asSpelledByPrinter(Options options) const;
  void select(const std::string& printer, const Pages& pages);
  void onPrinterChanged();
  void readDetails(const std::string& printer);
  void forgetPrinter();
  void onDetails(int reading, Outcome<std::shared_ptr<Details>> outcome);
  void findBundle();
  void openPanel();
  void closePanel();
  void hideRows();
  void fitWidth();
  void comeUp();
  void refuseToShow(const Failure& failure);
  void showNotice(const std::string& text);
  void startFrom(const Options& options);
  void onTabShown();
  void onTabLeft();
  void onEdited();
  void showSummary();
  void showHelp();
  void correct();
  void warn();

  void onResponse(int response);
  void close();
  void print(bool asItIs);
  void printIfAsked();
  void askAboutIllegalValues(const std::vector<IllegalValue>& values);
  [[nodiscard]] std::vector<std::string> panelKeywords() const;
  [[nodiscard]] Options panelOptions() const;
  [[nodiscard]] Order order();
  void send(const Order& order);
  void onSent(const Order& order, const Outcome<Delivery>& outcome);
  void tell(
      const Glib::ustring& message, std::function<void()> then = [] {});
  void ask(const Glib::ustring& message, Gtk::MessageType type,
           const std::vector<std::pair<Glib::ustring, int>>& answers, std::function<void(int)> then);
  void allowPrinting(bool allowed);
  void onPrintLive();
  void showSending(bool sending);
  // Runs what the panel takes part in. A panel that fails is closed and the person told; the dialog goes on.
  template <class Operation>
  bool guarded(Operation operation) {
    try {
      operation();
      return true;
    } catch (const PluginFailure& failure) {
      refuseToShow(failure);
      return false;
    }
  }

  const CommandLine line_;
  const Note note_;
  const std::shared_ptr<std::vector<Document>> documents_;
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
  Glib::RefPtr<Glib::MainLoop> loop_ = Glib::MainLoop::create();
  platform::linux::PrintSettings settings_;
  std::optional<std::string> wanted_;
  // The printer whose details are read or shown, whether they are still on their way, and which reading is
  // the one that counts.
  std::string current_;
  bool isReading_ = false;
  int reading_ = 0;
  // The printer that the dialog has started from; empty until one is known.
  std::string first_;
  // Whether this printer's panel is missing though it should be there.
  bool panelFailed_ = false;
  bool started_ = false;
  bool printWhenRead_ = false;
  bool mayPrint_ = true;
  // Says to the job that is on its way, if there is one, that it is not wanted any more.
  std::shared_ptr<std::atomic<bool>> unwanted_;
  std::optional<SentJob> sent_;
  // Where the focus was when the job was sent.
  GtkWidget* focused_ = nullptr;

  PanelPage* page_ = nullptr;
  Gtk::Label* pageTitle_ = nullptr;
  Gtk::Grid* summary_ = nullptr;
  Gtk::Label* notice_ = nullptr;
  Gtk::Label* progress_ = nullptr;
  std::unique_ptr<Gtk::PrintUnixDialog> dialog_;
  std::unique_ptr<Gtk::MessageDialog> question_;
  // Of the current printer, without them while it is read: its PPD, null for a printer without one, and the
  // options that the person saved.
  PpdHandle ppd_;
  Options saved_;
  // What GTK's rows showed of the command line's options before the person changed any.
  Options untouched_;
  // The bundle with the current printer's panel; none for a printer without a panel.
  std::optional<PluginBundle> bundle_;
  std::unique_ptr<PanelSession> panel_;
  sigc::connection selecting_;
};

}  // namespace tandemtrim::host
