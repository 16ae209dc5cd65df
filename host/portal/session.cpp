#include "host/portal/session.hpp"

#include <utility>

#include "host/portal/arguments.hpp"

namespace tandemtrim::host {
namespace {

// How long the user's choice is kept for a program that sends no document.
constexpr std::chrono::seconds kLongestWait = std::chrono::days(1);

}  // namespace

void Session::guarded(const std::function<void()>& act) {
  try {
    act();
  } catch (const std::exception& failure) {
    surroundings_.report(failure.what());
    end(Response::failed);
  }
}

std::optional<Failure> Session::open(const DialogRequest& asked, FileDescriptor document) {
  auto opened = surroundings_.open(asked, std::move(document),
                                   {[this] { guarded([this] { answerChoice(); }); },
                                    [this](DialogEnd dialogEnd) { onDialogEnd(dialogEnd); }});
  dialog_ = std::move(opened.dialog);
  return opened.failure;
}

void Session::prepare(std::unique_ptr<Request> request, const DialogRequest& asked) {
  request_ = std::move(request);
  guarded([&] {
    if (const auto failure = open(asked, FileDescriptor(-1))) {
      surroundings_.report(failure->fact().english());
      return end(Response::failed);
    }
    dialog_->show();
  });
}

void Session::answerChoice() {
  const auto choice = dialog_->choice();
  const auto token = surroundings_.issueToken();
  GVariantBuilder results;
  g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&results, "{sv}", "settings", dictionaryOf(choice.settings));
  g_variant_builder_add(&results, "{sv}", "page-setup", dictionaryOf(choice.pageSetup));
  g_variant_builder_add(&results, "{sv}", "token", g_variant_new_uint32(token));
  chosenAt_ = std::chrono::steady_clock::now();
  timeKept_ = std::make_unique<Timer>(kLongestWait, [this] { end(Response::failed); });
  request_->answer(Response::done, g_variant_builder_end(&results));
  request_.reset();
}

void Session::print(std::unique_ptr<Request> request, const DialogRequest& asked, FileDescriptor document) {
  isChoiceOld_ = std::chrono::steady_clock::now() - chosenAt_ > surroundings_.lifeOfToken;
  timeKept_.reset();
  request_ = std::move(request);
  copy_ = std::make_unique<DocumentCopy>(
      std::move(document), [this, asked](FileDescriptor copy, const std::optional<Failure>& failure) {
        guarded([&] { onCopied(asked, std::move(copy), failure); });
      });
}

void Session::onCopied(const DialogRequest& asked, FileDescriptor document,
                       const std::optional<Failure>& failure) {
  copy_.reset();
  if (failure) return fail(asked, *failure);
  if (dialog_)
    return isChoiceOld_ ? dialog_->offer(std::move(document)) : dialog_->print(std::move(document));
  if (const auto unusable = open(asked, std::move(document))) return fail(asked, *unusable);
  dialog_->show();
}

// The dialog shows the failure, since programs do not show why a document is not printed.
void Session::fail(const DialogRequest& asked, const Failure& failure) {
  surroundings_.report(failure.fact().english());
  if (!dialog_ && open(asked, FileDescriptor(-1))) return end(Response::failed);
  if (request_) request_->answer(Response::failed);
  dialog_->fail(failure);
}

void Session::onDialogEnd(DialogEnd dialogEnd) {
  switch (dialogEnd) {
    case DialogEnd::printed:
      return end(Response::done);
    case DialogEnd::cancelled:
      return end(Response::cancelled);
    case DialogEnd::failed:
      return end(Response::failed);
  }
}

// A job that the user has started is printed even without the program.
void Session::leave() {
  if (request_) request_->answer(Response::failed);
  if (dialog_ && !copy_ && !dialog_->leave()) return;
  end(Response::failed);
}

void Session::end(Response response) {
  if (request_) request_->answer(response);
  copy_.reset();
  surroundings_.onEnd();
}

}  // namespace tandemtrim::host
