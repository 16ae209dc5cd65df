#pragma once

#include <string>
#include <vector>

namespace tandemtrim::test {

/// A rectangle in millimetres from the page's upper left corner, before any rotation.
struct Bar {
  double left;
  double top;
  double width;
  double height;
};

struct PdfPage {
  double width = 210;
  double height = 297;
  /// Filled with black, or with the colour that `content` sets.
  std::vector<Bar> bars = {};
  /// More entries of the page, and more of its content.
  std::string entries = {};
  std::string content = {};
};

inline std::string points(double millimetres) { return std::to_string(millimetres / 25.4 * 72); }

/// A PDF file of these objects, the first of which is the catalogue. `trailer` has more entries of the
/// trailer.
inline std::string pdfOfObjects(const std::vector<std::string>& objects, const std::string& trailer = {}) {
  std::string file = "%PDF-1.5\n";
  std::string places = "0000000000 65535 f \n";
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const auto place = std::to_string(file.size());
    places += std::string(10 - place.size(), '0') + place + " 00000 n \n";
    file += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
  }
  const auto size = std::to_string(objects.size() + 1);
  const auto table = std::to_string(file.size());
  return file + "xref\n0 " + size + "\n" + places + "trailer\n<</Size " + size + "/Root 1 0 R" + trailer +
         ">>\nstartxref\n" + table + "\n%%EOF\n";
}

/// A stream with these additional entries.
inline std::string pdfStream(const std::string& content, const std::string& entries = {}) {
  return "<</Length " + std::to_string(content.size()) + entries + ">>stream\n" + content + "\nendstream";
}

/// A PDF file of these pages.
inline std::string pdfOf(const std::vector<PdfPage>& pages) {
  std::vector<std::string> objects{"<</Type/Catalog/Pages 2 0 R>>", ""};
  std::string kids;
  for (const auto& page : pages) {
    auto content = page.content;
    for (const auto& bar : page.bars)
      content += points(bar.left) + ' ' + points(page.height - bar.top - bar.height) + ' ' +
                 points(bar.width) + ' ' + points(bar.height) + " re f ";
    objects.push_back("<</Type/Page/Parent 2 0 R/MediaBox[0 0 " + points(page.width) + ' ' +
                      points(page.height) + "]/Contents " + std::to_string(objects.size() + 2) + " 0 R" +
                      page.entries + ">>");
    kids += std::to_string(objects.size()) + " 0 R ";
    objects.push_back(pdfStream(content));
  }
  objects[1] = "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(pages.size()) + ">>";
  return pdfOfObjects(objects);
}

}  // namespace tandemtrim::test
