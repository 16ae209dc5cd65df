#include "host/dialog/settings/paper.hpp"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

#include <cups/pwg.h>
#include <gtk/gtk.h>

namespace tandemtrim::host {
namespace {

constexpr double kPointsPerUnit = 72.0 / 2540.0;  // libcups measures in hundredths of a millimetre
constexpr std::string_view kCustom = "Custom.";

const pwg_media_t* mediaNamed(const std::string& name) {
  for (auto* const find : {pwgMediaForPWG, pwgMediaForPPD, pwgMediaForLegacy}) {
    if (const auto* const media = find(name.c_str())) return media;
  }
  return nullptr;
}

void forEachPart(const std::string& media, const std::function<void(const std::string&)>& visit) {
  for (std::size_t start = 0; start <= media.size();) {
    const auto end = std::min(media.find(',', start), media.size());
    visit(media.substr(start, end - start));
    start = end + 1;
  }
}

std::string points(double length) {
  std::array<char, G_ASCII_DTOSTR_BUF_SIZE> text{};
  return g_ascii_formatd(text.data(), text.size(), "%.2f", length);
}

}  // namespace

std::optional<Gtk::PaperSize> paperNamed(const std::string& name, ppd_file_t* ppd) {
  // Not by libcups, which would change the PPD for a name like "Custom.1x1".
  for (int i = 0; ppd != nullptr && i < ppd->num_sizes; ++i) {
    const auto& size = ppd->sizes[i];
    if (isSameKeyword(size.name, name)) return Gtk::PaperSize(size.name, size.name, size.width, size.length);
  }
  const auto* const media = mediaNamed(name);
  if (media == nullptr) return std::nullopt;
  const double width = media->width * kPointsPerUnit;
  const double height = media->length * kPointsPerUnit;
  if (ppd != nullptr && media->ppd != nullptr) return Gtk::PaperSize(media->ppd, media->ppd, width, height);
  return Glib::wrap(gtk_paper_size_new_from_ipp(media->pwg, width, height));
}

std::optional<Gtk::PaperSize> paperAskedFor(const Options& options, ppd_file_t* ppd) {
  std::optional<Gtk::PaperSize> paper;
  for (const auto& [keyword, value] : options) {
    if (!isSameKeyword(keyword, "media") && !isSameKeyword(keyword, "PageSize")) continue;
    forEachPart(value, [&](const std::string& part) {
      if (auto found = paperNamed(part, ppd)) paper = std::move(found);
    });
  }
  return paper;
}

std::optional<Gtk::PaperSize> defaultPaper(ppd_file_t* ppd) {
  const auto* const attribute = ppd == nullptr ? nullptr : ppdFindAttr(ppd, "DefaultPageSize", nullptr);
  return attribute == nullptr ? std::nullopt : paperNamed(attribute->value, ppd);
}

Option paperOption(const Gtk::PaperSize& paper) {
  // Papers of a printer without a PPD have this mark.
  if (gtk_paper_size_is_ipp(Gtk::PaperSize(paper).gobj()) != FALSE) return {"media", paper.get_name()};
  if (const auto name = paper.get_ppd_name(); !name.empty()) return {"PageSize", name};
  return {"PageSize", std::string(kCustom) + points(paper.get_width(Gtk::Unit::POINTS)) + 'x' +
                          points(paper.get_height(Gtk::Unit::POINTS))};
}

std::string mediaWithoutPaper(const std::string& media, ppd_file_t* ppd) {
  std::string others;
  forEachPart(media, [&](const std::string& part) {
    if (!part.empty() && !paperNamed(part, ppd)) others += (others.empty() ? "" : ",") + part;
  });
  return others;
}

}  // namespace tandemtrim::host
