#include "host/dialog/application_dialog.hpp"

#include <utility>

#include <gio/gdesktopappinfo.h>
#include <giomm/appinfo.h>
#include <glib/gi18n.h>

#include "host/dialog/dialog.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

// Whether the title is the one that GTK programs use for all documents, in English or the user's language.
bool isGenericTitle(const std::string& title) {
  return title.empty() || title == "Print" || title == g_dgettext("gtk40", "Print") ||
         title == g_dgettext("gtk30", "Print");
}

std::string nameOfProgram(const std::string& application) {
  if (application.empty()) return {};
  const Glib::RefPtr<Gio::AppInfo> info =
      Glib::wrap(G_APP_INFO(g_desktop_app_info_new((application + ".desktop").c_str())));
  return info ? info->get_display_name() : application;
}

// The job's name in the print server's queue.
std::string jobName(const DialogRequest& request) {
  std::string name = request.title;
  if (isGenericTitle(name)) name = request.document;
  if (name.empty()) name = nameOfProgram(request.application);
  if (name.empty()) name = localized(kDocumentText);
  return shortText(name);
}

DialogStart startFor(const DialogRequest& request, const std::string& name, FileDescriptor document) {
  DialogStart start;
  start.line.printer = request.printer;
  start.line.options = request.options;
  start.line.title = name;
  if (document.isOpen()) start.documents.emplace_back(std::move(document), name);
  start.request = &request;
  return start;
}

class DialogOfProgram : public ApplicationDialog {
 public:
  DialogOfProgram(const DialogRequest& request, FileDescriptor document, const Report& report, Events events)
      : name_(jobName(request)),
        events_(std::move(events)),
        dialog_(startFor(request, name_, std::move(document)), report,
                {events_.onChosen, [this] { end(); }}) {}

  void show() override { dialog_.show(); }
  [[nodiscard]] DialogChoice choice() override { return dialog_.choice(); }
  void print(FileDescriptor document) override { take(std::move(document), true); }
  void offer(FileDescriptor document) override { take(std::move(document), false); }
  void fail(const Failure& failure) override {
    hasFailed_ = true;
    dialog_.fail(failure);
  }
  [[nodiscard]] bool leave() override { return !dialog_.hasStartedPrinting(); }

 private:
  void take(FileDescriptor document, bool isToBePrinted) {
    try {
      dialog_.take(Document(std::move(document), name_), isToBePrinted);
    } catch (const Failure& failure) {
      fail(failure);
    }
  }
  void end() {
    const auto& printed = dialog_.printed();
    const auto* const job = std::get_if<SentJob>(&printed);
    if (hasFailed_ || (job != nullptr && job->failure)) return events_.onEnd(DialogEnd::failed);
    events_.onEnd(printed.index() == 0 ? DialogEnd::cancelled : DialogEnd::printed);
  }

  const std::string name_;
  const Events events_;
  // Whether there is no document, or it cannot be read.
  bool hasFailed_ = false;
  Dialog dialog_;
};

}  // namespace

std::unique_ptr<ApplicationDialog> openDialog(const DialogRequest& request, FileDescriptor document,
                                              const Report& report, ApplicationDialog::Events events) {
  return std::make_unique<DialogOfProgram>(request, std::move(document), report, std::move(events));
}

}  // namespace tandemtrim::host
