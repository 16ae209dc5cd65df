#include "host/dialog/preview/page_preview.hpp"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

#include <dlfcn.h>

#include "host/panel/trust.hpp"

namespace tandemtrim::host {
namespace {

// Beside the module that this code is part of.
std::string pageProgram() {
  Dl_info module{};
  if (dladdr(reinterpret_cast<const void*>(&pageProgram), &module) == 0) return {};
  return std::filesystem::absolute(module.dli_fname).parent_path() / "tandem-trim-page";
}

RenderedPage readByProgram(const std::shared_ptr<FileDescriptor>& document, int number,
                           const std::weak_ptr<void>& reader) {
  PageRequest request{.program = pageProgram(), .page = number};
  request.isWanted = [&] { return !reader.expired(); };
  if (const auto fault = openToStrangers(request.program)) throw Failure(*fault);
  return readPage(std::move(*document), request);
}

}  // namespace

PagePreview::PagePreview(Report report, Events events)
    : report_(std::move(report)), events_(std::move(events)) {}

void PagePreview::start() {
  if (!page_ && !isReading_ && !hasFailed_) read();
}

void PagePreview::turn(int pages) {
  if (!page_) return;
  wanted_ = std::clamp(wanted_ + pages, 1, page_->pages);
  if (wanted_ != shown_ && !isReading_) read();
}

void PagePreview::forget() {
  reader_ = std::make_shared<int>(0);
  page_.reset();
  shown_ = wanted_ = 1;
  isReading_ = hasFailed_ = false;
}

void PagePreview::read() {
  auto document = std::make_shared<FileDescriptor>(events_.openDocument());
  hasFailed_ = !document->isOpen();
  if (hasFailed_) return;
  isReading_ = true;
  const std::weak_ptr<void> reader = reader_;
  inBackground<RenderedPage>(
      reader, [document, reader, number = wanted_] { return readByProgram(document, number, reader); },
      [this, number = wanted_](auto outcome) { onRead(std::move(outcome), number); });
}

void PagePreview::onRead(Outcome<RenderedPage> outcome, int number) {
  isReading_ = false;
  if (!outcome.result) {
    report_(outcome.failure->what());
    hasFailed_ = true;
    wanted_ = shown_;
    return;
  }
  page_ = std::move(outcome.result);
  shown_ = number;
  // The document's end may be another one than it was.
  wanted_ = std::clamp(wanted_, 1, page_->pages);
  if (wanted_ != shown_) read();
  events_.onPage();
}

}  // namespace tandemtrim::host
