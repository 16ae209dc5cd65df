#include "host/portal/arguments.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <cups/pwg.h>

#include "host/job/page_ranges.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::size_t kLongestText = 255;
constexpr int kMostCopies = 9999;
constexpr double kSmallestScale = 1;
constexpr double kLargestScale = 1000;
// In millimetres.
constexpr double kSmallestSide = 10;
constexpr double kLargestSide = 5000;

using Value = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

Value valueIn(GVariant* dictionary, const char* key, const GVariantType* type) {
  return {g_variant_lookup_value(dictionary, key, type), g_variant_unref};
}

// A line of text; nullopt if it is too long or contains control characters.
std::optional<std::string> line(const char* text) {
  std::string whole(text);
  if (whole.size() > kLongestText || plainText(whole) != whole) return std::nullopt;
  return whole;
}

std::optional<std::string> textIn(GVariant* dictionary, const char* key) {
  const auto value = valueIn(dictionary, key, G_VARIANT_TYPE_STRING);
  return value ? line(g_variant_get_string(value.get(), nullptr)) : std::nullopt;
}

bool flagIn(GVariant* dictionary, const char* key, bool otherwise) {
  const auto value = valueIn(dictionary, key, G_VARIANT_TYPE_BOOLEAN);
  return value ? g_variant_get_boolean(value.get()) != FALSE : otherwise;
}

std::optional<double> lengthIn(GVariant* dictionary, const char* key) {
  const auto value = valueIn(dictionary, key, G_VARIANT_TYPE_DOUBLE);
  const double length = value ? g_variant_get_double(value.get()) : 0;
  return length >= kSmallestSide && length <= kLargestSide ? std::optional(length) : std::nullopt;
}

template <class Number>
std::optional<Number> numberOf(std::string_view text, Number least, Number most) {
  Number number = 0;
  const auto* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  const bool isNumber = read.ec == std::errc() && read.ptr == end;
  return isNumber && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

// A value of GTK's print settings and the option of a job that does the same.
struct SettingRow {
  const char* key;
  const char* value;
  const char* keyword;
  const char* optionValue;
};
constexpr std::array<SettingRow, 20> kSettingRows{{{"collate", "true", "Collate", "True"},
                                                   {"collate", "false", "Collate", "False"},
                                                   {"reverse", "true", "OutputOrder", "Reverse"},
                                                   {"reverse", "false", "OutputOrder", "Normal"},
                                                   {"page-set", "even", "page-set", "even"},
                                                   {"page-set", "odd", "page-set", "odd"},
                                                   {"number-up", "2", "number-up", "2"},
                                                   {"number-up", "4", "number-up", "4"},
                                                   {"number-up", "6", "number-up", "6"},
                                                   {"number-up", "9", "number-up", "9"},
                                                   {"number-up", "16", "number-up", "16"},
                                                   {"number-up-layout", "lrtb", "number-up-layout", "lrtb"},
                                                   {"number-up-layout", "lrbt", "number-up-layout", "lrbt"},
                                                   {"number-up-layout", "rltb", "number-up-layout", "rltb"},
                                                   {"number-up-layout", "rlbt", "number-up-layout", "rlbt"},
                                                   {"number-up-layout", "tblr", "number-up-layout", "tblr"},
                                                   {"number-up-layout", "tbrl", "number-up-layout", "tbrl"},
                                                   {"number-up-layout", "btlr", "number-up-layout", "btlr"},
                                                   {"number-up-layout", "btrl", "number-up-layout", "btrl"},
                                                   {"page-set", "all", "page-set", "all"}}};
constexpr std::array<std::pair<const char*, const char*>, 4> kOrientations{
    {{"portrait", "3"}, {"landscape", "4"}, {"reverse_landscape", "5"}, {"reverse_portrait", "6"}}};
constexpr std::array<std::pair<const char*, FileFormat>, 3> kFileFormats{
    {{"pdf", FileFormat::pdf}, {"ps", FileFormat::postScript}, {"svg", FileFormat::svg}}};

// GTK counts pages from 0.
std::optional<std::string> pagesOf(std::string_view ranges) {
  std::vector<PageRange> pages;
  while (!ranges.empty()) {
    const auto range = ranges.substr(0, ranges.find(','));
    ranges.remove_prefix(std::min(range.size() + 1, ranges.size()));
    const auto dash = range.find('-');
    constexpr int kLastPage = PageRange::kEnd - 2;
    const auto first = numberOf(range.substr(0, dash), 0, kLastPage);
    const auto last = dash == std::string_view::npos ? first : numberOf(range.substr(dash + 1), 0, kLastPage);
    if (!first || !last || *last < *first) return std::nullopt;
    pages.push_back({*first + 1, *last + 1});
  }
  return pages.empty() ? std::nullopt : std::optional(pageRangesText(std::move(pages)));
}

Options optionsOf(GVariant* settings) {
  Options options;
  if (const auto copies = textIn(settings, "n-copies"); copies && numberOf(*copies, 1, kMostCopies))
    options.push_back({"copies", *copies});
  if (textIn(settings, "print-pages") == "ranges") {
    if (auto pages = pagesOf(textIn(settings, "page-ranges").value_or("")))
      options.push_back({"page-ranges", *std::move(pages)});
  }
  for (const auto& [key, value, keyword, optionValue] : kSettingRows) {
    if (textIn(settings, key) == value) options.push_back({keyword, optionValue});
  }
  return options;
}

void addPageSetup(Options& options, GVariant* pageSetup) {
  constexpr double kUnits = 100;  // libcups measures in hundredths of a millimetre
  const auto width = lengthIn(pageSetup, "Width");
  const auto height = lengthIn(pageSetup, "Height");
  if (width && height) {
    const auto* const media = pwgMediaForSize(static_cast<int>(std::lround(*width * kUnits)),
                                              static_cast<int>(std::lround(*height * kUnits)));
    if (media != nullptr) options.push_back({"media", media->pwg});
  }
  const auto orientation = textIn(pageSetup, "Orientation");
  for (const auto& [name, value] : kOrientations) {
    if (orientation == name) options.push_back({"orientation-requested", value});
  }
}

std::vector<FileFormat> formatsIn(GVariant* options) {
  const auto given = valueIn(options, "supported_output_file_formats", G_VARIANT_TYPE_STRING_ARRAY);
  std::vector<FileFormat> formats;
  for (const auto& [name, format] : kFileFormats) {
    bool isGiven = !given;
    for (gsize i = 0; given && i < g_variant_n_children(given.get()); ++i) {
      const Value child(g_variant_get_child_value(given.get(), i), g_variant_unref);
      isGiven = isGiven || std::string_view(g_variant_get_string(child.get(), nullptr)) == name;
    }
    if (isGiven) formats.push_back(format);
  }
  // GTK offers SVG only along with both others.
  if (formats.size() < kFileFormats.size()) std::erase(formats, FileFormat::svg);
  return formats;
}

DialogRequest requestOf(const Caller& caller, GVariant* options) {
  DialogRequest request;
  request.application = line(caller.application.c_str()).value_or("");
  request.title = shortText(caller.title);
  request.parent = line(caller.parent.c_str()).value_or("");
  request.isModal = flagIn(options, "modal", true);
  request.acceptLabel = textIn(options, "accept_label").value_or("");
  return request;
}

}  // namespace

DialogRequest prepareRequest(const Caller& caller, GVariant* settings, GVariant* pageSetup,
                             GVariant* options) {
  auto request = requestOf(caller, options);
  request.formats = formatsIn(options);
  request.hasCurrentPage = flagIn(options, "has_current_page", false);
  request.hasSelection = flagIn(options, "has_selected_pages", false);
  const auto isName = [](const std::optional<std::string>& text) {
    return text && !text->empty() && text->find('/') == std::string::npos;
  };
  if (auto printer = textIn(settings, "printer"); isName(printer)) request.printer = std::move(printer);
  if (auto document = textIn(settings, "output-basename"); isName(document))
    request.document = *std::move(document);
  request.scale = numberOf(textIn(settings, "scale").value_or(""), kSmallestScale, kLargestScale);
  request.options = optionsOf(settings);
  addPageSetup(request.options, pageSetup);
  return request;
}

DialogRequest printRequest(const Caller& caller, GVariant* options) { return requestOf(caller, options); }

std::uint32_t tokenIn(GVariant* options) {
  const auto token = valueIn(options, "token", G_VARIANT_TYPE_UINT32);
  return token ? g_variant_get_uint32(token.get()) : 0;
}

GVariant* dictionaryOf(const Entries& entries) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
  for (const auto& [key, value] : entries) {
    const auto* const text = std::get_if<std::string>(&value);
    g_variant_builder_add(&builder, "{sv}", key.c_str(),
                          text != nullptr ? g_variant_new_string(text->c_str())
                                          : g_variant_new_double(std::get<double>(value)));
  }
  return g_variant_builder_end(&builder);
}

}  // namespace tandemtrim::host
