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
  /// From 1 on.
  int number = 0;
  /// Of the document; 0 where no page is shown.
  int pages = 0;
  /// Whether others are printed before it and behind it.
  bool hasPrevious = false;
  bool hasNext = false;
};

/// The page of the document that the user looks at, the first one that is printed to begin with. It is read
/// in the background, once it is to be shown. A document that gives no page is reported once.
class PagePreview {
 public:
  struct Events {
    /// The document, opened once more; not open where there is none with pages.
    std::function<FileDescriptor()> openDocument;
    /// There is another page.
    std::function<void()> onPage;
  };

  PagePreview(Report report, Events events);

  /// Shows one of the pages that are printed, and the same one for as long as it is among them. Reads it
  /// unless it is there.
  void show(const PrintedPages& printed);
  /// Goes on to the next page that is printed, or back where `step` is negative; the page stays until that
  /// one is there.
  void turn(int step);
  /// There is another document.
  void forget();
  /// Null as long as there is none, and where no page of the document is printed.
  [[nodiscard]] const RenderedPage* page() const { return isPrinted(shown_) ? &*page_ : nullptr; }
  /// That of the page, which is not null.
  [[nodiscard]] PagePlace place() const;

 private:
  // None is for a document that ends before the page.
  using Answer = std::optional<RenderedPage>;

  [[nodiscard]] bool isPrinted(int page) const;
  void settle();
  void read();
  void onRead(Outcome<Answer> outcome, int number);

  const Report report_;
  const Events events_;
  PrintedPages printed_;
  // The first page behind the document's end, as far as that is known.
  int end_ = PageRange::kEnd;
  std::optional<RenderedPage> page_;
  // Pages; 0 is none.
  int shown_ = 0;
  int wanted_ = 0;
  bool isReading_ = false;
  bool hasFailed_ = false;
  // What is read for another document, or for a dialog that has gone, is dropped.
  std::shared_ptr<void> reader_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
