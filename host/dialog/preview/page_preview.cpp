#include "host/dialog/preview/page_preview.hpp"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

#include <dlfcn.h>

#include "host/panel/trust.hpp"

namespace tandemtrim::host {
namespace {

// The program beside the module that this code is part of.
std::string pageProgram() {
  Dl_info module{};
  if (dladdr(reinterpret_cast<const void*>(&pageProgram), &module) == 0) return {};
  return std::filesystem::absolute(module.dli_fname).parent_path() / "tandem-trim-page";
}

std::optional<RenderedPage> readByProgram(const std::shared_ptr<FileDescriptor>& document, int number,
                                          const std::weak_ptr<void>& reader) {
  PageRequest request{.program = pageProgram(), .page = number};
  request.isWanted = [&] { return !reader.expired(); };
  if (const auto fault = openToStrangers(request.program)) throw Failure(*fault);
  return readPage(std::move(*document), request);
}

}  // namespace

PagePreview::PagePreview(Report report, Events events)
    : report_(std::move(report)), events_(std::move(events)) {}

bool PagePreview::isPrinted(int page) const { return page > 0 && page < end_ && printed_.upTo(page) == page; }

PagePlace PagePreview::place() const {
  return {shown_, page_->pages, printed_.upTo(shown_ - 1).has_value(),
          printed_.from(shown_ + 1, end_).has_value()};
}

void PagePreview::show(const PrintedPages& printed) {
  printed_ = printed;
  settle();
}

void PagePreview::turn(int step) {
  const auto next = step < 0 ? printed_.upTo(wanted_ - 1) : printed_.from(wanted_ + 1, end_);
  if (!next) return;
  wanted_ = *next;
  hasFailed_ = false;
  settle();
}

void PagePreview::forget() {
  reader_ = std::make_shared<int>(0);
  page_.reset();
  shown_ = wanted_ = 0;
  end_ = PageRange::kEnd;
  isReading_ = hasFailed_ = false;
}

// Makes sure that the wanted page is one that is printed, and reads it.
void PagePreview::settle() {
  if (!isPrinted(wanted_)) wanted_ = isPrinted(shown_) ? shown_ : printed_.from(1, end_).value_or(0);
  if (wanted_ != 0 && wanted_ != shown_ && !isReading_ && !hasFailed_) read();
}

void PagePreview::read() {
  auto document = std::make_shared<FileDescriptor>(events_.openDocument());
  hasFailed_ = !document->isOpen();
  if (hasFailed_) return;
  isReading_ = true;
  const std::weak_ptr<void> reader = reader_;
  inBackground<Answer>(
      reader, [document, reader, number = wanted_] { return readByProgram(document, number, reader); },
      [this, number = wanted_](auto outcome) { onRead(std::move(outcome), number); });
}

void PagePreview::onRead(Outcome<Answer> outcome, int number) {
  isReading_ = false;
  if (!outcome.result) {
    report_(outcome.failure->what());
    hasFailed_ = true;
    wanted_ = shown_;
    return;
  }
  if (auto& answer = *outcome.result) {
    page_ = std::move(answer);
    shown_ = number;
    end_ = page_->pages + 1;
  } else {
    end_ = std::min(end_, number);
  }
  settle();
  events_.onPage();
}

}  // namespace tandemtrim::host
