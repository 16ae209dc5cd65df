#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/dialog/asking/background.hpp"
#include "host/dialog/preview/page_reader.hpp"
#include "host/dialog/preview/printed_pages.hpp"
#include "host/file_descriptor.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Which page of its document a preview shows.
struct PagePlace {
  /// Counted from 1.
  int number = 0;
  /// How many pages the document has; 0 when no page is shown.
  int pages = 0;
  /// Whether other pages are printed before and after it.
  bool hasPrevious = false;
  bool hasNext = false;
};

/// The page of the document that the user looks at; initially the first one that is printed. It is read in
/// the background when it is to be shown. A document without a page that can be read is reported once.
class PagePreview {
 public:
  struct Events {
    /// Opens the document again; the result is not open where there is no document with pages.
    std::function<FileDescriptor()> openDocument;
    /// Called when another page has been read.
    std::function<void()> onPage;
  };

  PagePreview(Report report, Events events);

  /// Shows one of the pages that are printed: the present one if it is among them. Reads the page if
  /// necessary.
  void show(const PrintedPages& printed);
  /// Turns to the next page that is printed, or back if `step` is negative; the present page stays until the
  /// other one is read.
  void turn(int step);
  /// Called when there is another document.
  void forget();
  /// Null until a page is read, and when that page is not printed.
  [[nodiscard]] const RenderedPage* page() const { return isPrinted(shown_) ? &*page_ : nullptr; }
  /// The place of the page; only to be called when page() is not null.
  [[nodiscard]] PagePlace place() const;

 private:
  // nullopt if the document ends before the page.
  using Answer = std::optional<RenderedPage>;

  [[nodiscard]] bool isPrinted(int page) const;
  void settle();
  void read();
  void onRead(Outcome<Answer> outcome, int number);

  const Report report_;
  const Events events_;
  PrintedPages printed_;
  // The number after the last page, as far as it is known.
  int end_ = PageRange::kEnd;
  std::optional<RenderedPage> page_;
  // Page numbers; 0 means no page.
  int shown_ = 0;
  int wanted_ = 0;
  bool isReading_ = false;
  bool hasFailed_ = false;
  // A page that is read for an earlier document, or for a dialog that has gone, is dropped.
  std::shared_ptr<void> reader_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
