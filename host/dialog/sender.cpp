#include "host/dialog/sender.hpp"

#include <utility>

#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"
#include "host/progress_text.hpp"

namespace tandemtrim::host {
namespace {

std::optional<double> shareOf(std::uint64_t sent, std::optional<std::uint64_t> size) {
  if (!size || *size == 0) return std::nullopt;
  return static_cast<double>(sent) / static_cast<double>(*size);
}

std::string shownName(std::optional<int> job, const std::string& name) {
  if (!job) return name;
  return filled(localized(kOfJobText), {{"[name]", name}, {"[number]", std::to_string(*job)}});
}

}  // namespace

Sender::Sender(std::vector<Document> documents, Report report, AskForLogin ask, ShowProgress showProgress)
    : documents_(std::make_shared<std::vector<Document>>(std::move(documents))),
      report_(std::move(report)),
      ask_(std::move(ask)),
      showProgress_(std::move(showProgress)) {
  for (auto& document : *documents_) document.keep();
}

void Sender::take(Document document) {
  documents_ = std::make_shared<std::vector<Document>>();
  documents_->push_back(std::move(document));
}

FileDescriptor Sender::openPages() const {
  const bool hasPages =
      documents_->size() == 1 && formatOf(documents_->front().beginning()) == FileFormat::pdf;
  return hasPages ? documents_->front().openAgain() : FileDescriptor(-1);
}

Progress Sender::makeProgress() const {
  return [show = showProgress_, cancelled = cancelled_, underWay = std::make_shared<std::atomic<bool>>(false),
          alive = std::weak_ptr<void>(alive_)](auto job, const std::string& name, auto sent, auto size) {
    if (const char* const reason = *cancelled)
      throw Failure(Trouble::cancelled, Fact(reason, "cancelled"_fact, {}));
    // Documents are sent faster than the dialog can show it.
    if (underWay->exchange(true)) return;
    inForeground([show, alive, underWay, text = progressText(shownName(job, name), sent, size, localized),
                  share = shareOf(sent, size)] {
      *underWay = false;
      if (!alive.expired()) show(text, share);
    });
  };
}

void Sender::send(const PrintRequest& request, Done done) {
  cancelled_ = std::make_shared<std::atomic<const char*>>(nullptr);
  inBackground<SendResult>(
      alive_,
      [request, documents = documents_, progress = makeProgress(), report = report_] {
        return sendRequest(request, *documents, progress, report);
      },
      [this, request, done = std::move(done)](auto outcome) {
        finish(request, outcome);
        done(outcome);
      },
      ask_);
}

void Sender::save(const FileTarget& target, std::function<void(const Outcome<SavedFile>&)> done) {
  cancelled_ = std::make_shared<std::atomic<const char*>>(nullptr);
  inBackground<SavedFile>(
      alive_,
      [target, documents = documents_, cancelled = cancelled_] {
        return saveToFile(documents->front(), target, [&] {
          if (const char* const reason = *cancelled)
            throw Failure(Trouble::cancelled, Fact(reason, "cancelled"_fact, {}));
        });
      },
      [this, done = std::move(done)](const auto& outcome) {
        reportFailure(outcome.failure);
        done(outcome);
      });
}

void Sender::reportFailure(const std::optional<Failure>& failure) const {
  if (failure && *cancelled_ == nullptr) report_(failure->fact().english());
}

void Sender::finish(const PrintRequest& request, Outcome<SendResult>& outcome) const {
  reportFailure(outcome.failure);
  if (!outcome.result) return;
  if (const auto forgotten = remember({request.server, request.printer}, request.remembered, report_))
    outcome.result->problems.push_back(*forgotten);
}

}  // namespace tandemtrim::host
