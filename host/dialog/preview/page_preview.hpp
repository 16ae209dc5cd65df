#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/dialog/asking/background.hpp"
#include "host/dialog/preview/page_reader.hpp"
#include "host/file_descriptor.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The page of the document that the user looks at, the first one to begin with. It is read in the
/// background, once it is to be shown. A document that gives no page is reported once.
class PagePreview {
 public:
  struct Events {
    /// The document, opened once more; not open where there is none with pages.
    std::function<FileDescriptor()> openDocument;
    /// There is another page.
    std::function<void()> onPage;
  };

  PagePreview(Report report, Events events);

  /// Reads the page unless it is there.
  void start();
  /// Goes on by so many pages, or back, within the document; the page stays until the next one is there.
  void turn(int pages);
  /// There is another document.
  void forget();
  /// Null as long as there is none.
  [[nodiscard]] const RenderedPage* page() const { return page_ ? &*page_ : nullptr; }
  /// From 1 on.
  [[nodiscard]] int number() const { return shown_; }

 private:
  void read();
  void onRead(Outcome<RenderedPage> outcome, int number);

  const Report report_;
  const Events events_;
  std::optional<RenderedPage> page_;
  int shown_ = 1;
  int wanted_ = 1;
  bool isReading_ = false;
  bool hasFailed_ = false;
  // What is read for another document, or for a dialog that has gone, is dropped.
  std::shared_ptr<void> reader_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
