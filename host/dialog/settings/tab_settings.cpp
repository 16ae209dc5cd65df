#include "host/dialog/settings/tab_settings.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "host/changed_entries.hpp"
#include "host/dialog/settings/paper.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/failure.hpp"
#include "host/filled_text.hpp"
#include "host/job/page_ranges.hpp"
#include "host/job/time_of_day.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::string_view kPrefix = "cups-";
// GTK's value for a choice that is unavailable.
constexpr std::string_view kIgnored = "gtk-ignore-value";

// Keywords of options that the tabs show for every printer.
constexpr std::array<const char*, 11> kAlwaysShown{"copies",
                                                   "page-ranges",
                                                   "page-set",
                                                   "orientation-requested",
                                                   "landscape",
                                                   "PageSize",
                                                   "PageRegion",
                                                   "OutputOrder",
                                                   "Collate",
                                                   "sheet-collate",
                                                   "multiple-document-handling"};
// Keywords for two-sided printing, which the tabs show when the printer can do it.
constexpr std::array<const char*, 5> kDuplexes{"sides", "Duplex", "JCLDuplex", "EFDuplex", "KD03Duplex"};

struct Choice {
  const char* value;
  int gtk;
};
constexpr std::array<Choice, 3> kPageSets{
    {{"all", GTK_PAGE_SET_ALL}, {"even", GTK_PAGE_SET_EVEN}, {"odd", GTK_PAGE_SET_ODD}}};
constexpr std::array<Choice, 4> kOrientations{{{"3", GTK_PAGE_ORIENTATION_PORTRAIT},
                                               {"4", GTK_PAGE_ORIENTATION_LANDSCAPE},
                                               {"5", GTK_PAGE_ORIENTATION_REVERSE_LANDSCAPE},
                                               {"6", GTK_PAGE_ORIENTATION_REVERSE_PORTRAIT}}};
struct Sides {
  const char* sides;
  const char* duplex;
};
constexpr std::array<Sides, 3> kSides{{{"one-sided", "None"},
                                       {"two-sided-long-edge", "DuplexNoTumble"},
                                       {"two-sided-short-edge", "DuplexTumble"}}};

template <class Keywords>
bool isAmong(const std::string& keyword, const Keywords& keywords) {
  return std::ranges::any_of(keywords, [&](const char* known) { return isSameKeyword(known, keyword); });
}

template <class Choices>
std::string valueOf(const Choices& choices, int gtk) {
  return std::ranges::find(choices, gtk, &Choice::gtk)->value;
}

template <class Choices>
std::optional<int> choiceOf(const Choices& choices, std::string_view value) {
  const auto* const found = std::ranges::find(choices, value, &Choice::value);
  return found == choices.end() ? std::nullopt : std::optional<int>(found->gtk);
}

std::optional<int> numberIn(std::string_view text) {
  int number = 0;
  const auto* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  return read.ec == std::errc() && read.ptr == end ? std::optional<int>(number) : std::nullopt;
}

// GTK counts pages from 0; its last one is -1.
std::vector<PageRange> pageRangesOf(const Gtk::PrintSettings& settings) {
  int count = 0;
  auto* const ranges =
      gtk_print_settings_get_page_ranges(const_cast<GtkPrintSettings*>(settings.gobj()), &count);
  std::vector<PageRange> pages;
  pages.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    pages.push_back({ranges[i].start + 1, ranges[i].end < 0 ? PageRange::kEnd : ranges[i].end + 1});
  g_free(ranges);
  return pages;
}

void applyPageRanges(const std::string& text, Gtk::PrintSettings& settings) {
  std::vector<GtkPageRange> ranges;
  for (const auto& [first, last] : parsePageRanges(text).ranges)
    ranges.push_back({first - 1, last == PageRange::kEnd ? -1 : last - 1});
  if (ranges.empty()) return;
  settings.set_print_pages(Gtk::PrintPages::RANGES);
  gtk_print_settings_set_page_ranges(settings.gobj(), ranges.data(), static_cast<int>(ranges.size()));
}

// The row for two-sided printing has one of these two names, depending on the printer.
void applySides(const std::string& value, Gtk::PrintSettings& settings) {
  for (const auto& [sides, duplex] : kSides) {
    if (value != sides && value != duplex) continue;
    settings.set(std::string(kPrefix) + "sides", sides);
    settings.set(std::string(kPrefix) + "Duplex", duplex);
  }
}

bool isTrue(const std::string& value) { return isSameKeyword(value, "true"); }

void applyOption(const Option& option, Gtk::PrintSettings& settings) {
  const auto& [keyword, value] = option;
  const auto is = [&](const char* name) { return isSameKeyword(option.keyword, name); };
  if (is("copies")) {
    if (const auto copies = numberIn(value); copies && *copies > 0) settings.set_n_copies(*copies);
  } else if (is("page-ranges")) {
    applyPageRanges(value, settings);
  } else if (is("page-set")) {
    if (const auto set = choiceOf(kPageSets, value)) settings.set_page_set(Gtk::PageSet(*set));
  } else if (is("OutputOrder")) {
    settings.set_reverse(isSameKeyword(value, "reverse"));
  } else if (is("Collate")) {
    settings.set_collate(isTrue(value));
  } else if (is("sheet-collate")) {
    settings.set_collate(value == "collated");
  } else if (is("multiple-document-handling")) {
    settings.set_collate(value != "separate-documents-uncollated-copies");
  } else if (isAmong(keyword, kDuplexes)) {
    applySides(value, settings);
  } else {
    settings.set(std::string(kPrefix) + keyword, value);
  }
}

std::optional<int> orientationAskedFor(const Options& options) {
  std::optional<int> orientation;
  for (const auto& [keyword, value] : options) {
    if (isSameKeyword(keyword, "landscape"))
      orientation =
          isTrue(value) || value.empty() ? GTK_PAGE_ORIENTATION_LANDSCAPE : GTK_PAGE_ORIENTATION_PORTRAIT;
    if (isSameKeyword(keyword, "orientation-requested"))
      if (const auto known = choiceOf(kOrientations, value)) orientation = known;
  }
  return orientation;
}

void applyPageSetup(const Options& options, ppd_file_t* ppd, Glib::RefPtr<Gtk::PageSetup>& setup) {
  auto paper = paperAskedFor(options, ppd);
  const auto orientation = orientationAskedFor(options);
  if (!paper && !orientation) return;
  if (!setup) {
    setup = Gtk::PageSetup::create();
    if (!paper) paper = defaultPaper(ppd);
  }
  if (paper) setup->set_paper_size_and_default_margins(*paper);
  if (orientation) setup->set_orientation(Gtk::PageOrientation(*orientation));
}

void removeShown(Options& options, ppd_file_t* ppd) {
  for (auto& [keyword, value] : options) {
    if (isSameKeyword(keyword, "media")) value = mediaWithoutPaper(value, ppd);
  }
  std::erase_if(options, [](const Option& option) {
    return isAmong(option.keyword, kAlwaysShown) ||
           (isSameKeyword(option.keyword, "media") && option.value.empty());
  });
}

// The options that GTK's rows for this printer show.
Options rowOptions(Gtk::PrintSettings& settings) {
  Options options;
  settings.setting_foreach([&](const Glib::ustring& key, const Glib::ustring& value) {
    const std::string_view name = key.raw();
    if (name.starts_with(kPrefix) && value.raw() != kIgnored)
      options.push_back({std::string(name.substr(kPrefix.size())), value});
  });
  return options;
}

// Whether one of these options has the option's keyword.
bool isAskedFor(const Option& option, const Options& asked) {
  return std::ranges::any_of(
      asked, [&](const Option& other) { return isSameKeyword(other.keyword, option.keyword); });
}

// GTK converts a time of day to universal time, and passes on any other text.
void refuseWrongTime(const Gtk::PrintSettings& settings) {
  if (settings.get("print-at") != "at" || isTimeOfDay(settings.get("cups-job-hold-until").raw())) return;
  throw Failure(Trouble::userMessage,
                Fact(FactText{kWrongTimeText}, {{"[text]", shortText(settings.get("print-at-time").raw())}}));
}

// The option media may name a tray besides the paper.
void addPaper(Options& options, Option paper) {
  for (const auto& [keyword, value] : options) {
    if (isSameKeyword(keyword, paper.keyword)) paper.value += ',' + value;
  }
  setOption(options, std::move(paper));
}

}  // namespace

void applyOptions(const Options& options, ppd_file_t* ppd, TabSettings& tabs) {
  for (const auto& option : options) applyOption(option, *tabs.settings);
  applyPageSetup(options, ppd, tabs.setup);
}

Glib::RefPtr<Gtk::PrintSettings> settingsOfNextPrinter(const Glib::RefPtr<Gtk::PrintSettings>& now,
                                                       const Glib::RefPtr<Gtk::PrintSettings>& kept,
                                                       const Options& asked) {
  TabSettings wanted{Gtk::PrintSettings::create(), {}};
  applyOptions(asked, nullptr, wanted);
  auto next = (kept ? kept : now)->copy();
  wanted.settings->setting_foreach([&](const Glib::ustring& key, const Glib::ustring& value) {
    next->set(key, now->has_key(key) ? now->get(key) : value);
  });
  // A missing key is unset.
  for (const auto* key : kKeysOfTheDocument)
    gtk_print_settings_set(next->gobj(), key, gtk_print_settings_get(now->gobj(), key));
  return next;
}

TabSettings tabsOfNextPrinter(const TabSettings& now, const TabSettings& remembered, const Options& saved,
                              const Options& asked, ppd_file_t* ppd) {
  TabSettings next{now.settings->copy(), remembered.setup};
  if (!remembered.settings) {
    auto options = withoutThoseOfOneJob(saved);
    std::erase_if(options, [&](const Option& option) { return isAskedFor(option, asked); });
    applyOptions(options, ppd, next);
  }
  TabSettings wanted{Gtk::PrintSettings::create(), {}};
  applyOptions(asked, ppd, wanted);
  if (wanted.setup || !next.setup) next.setup = now.setup;
  return next;
}

bool isDuplexKeyword(const std::string& keyword) { return isAmong(keyword, kDuplexes); }

std::vector<std::string> spellings(const Option& option) {
  std::vector<std::string> values{option.value};
  if (!isDuplexKeyword(option.keyword)) return values;
  for (const auto& [sides, duplex] : kSides) {
    if (option.value == sides) values.emplace_back(duplex);
    if (option.value == duplex) values.emplace_back(sides);
  }
  return values;
}

Options rowsShowing(const TabSettings& tabs, const Options& options) {
  auto rows = rowOptions(*tabs.settings);
  std::erase_if(rows, [&](const Option& row) { return !isAskedFor(row, options); });
  return rows;
}

void refuseWrongPages(const std::string& text) {
  // GTK takes a text that it does not understand for page 1.
  if (text.empty() || !parsePageRanges(text, ",;:").mistake) return;
  throw Failure(Trouble::userMessage, Fact(FactText{kWrongPagesText}, {{"[text]", shortText(text)}}));
}

void refuseNoPages(const Gtk::PrintSettings& settings) {
  if (settings.get_print_pages() == Gtk::PrintPages::RANGES && pageRangesOf(settings).empty())
    throw Failure(Trouble::userMessage, Fact(FactText{kNoPagesText}, {}));
}

void addTabOptions(const TabSettings& tabs, ppd_file_t* ppd, const GtkPaperSize* printersPaper,
                   const Options& untouched, Options& options) {
  removeShown(options, ppd);
  const auto rows = changedEntries(untouched, rowOptions(*tabs.settings));
  const auto isDuplex = [](const Option& option) { return isDuplexKeyword(option.keyword); };
  if (std::ranges::any_of(rows, isDuplex)) std::erase_if(options, isDuplex);
  for (const auto& row : rows) setOption(options, row);

  const auto& settings = *tabs.settings;
  refuseWrongTime(settings);
  const int copies = settings.get_n_copies();
  setOption(options, {"copies", std::to_string(copies)});
  if (copies > 1) setOption(options, {"Collate", settings.get_collate() ? "True" : "False"});
  setOption(options, {"OutputOrder", settings.get_reverse() ? "Reverse" : "Normal"});
  setOption(options, {"page-set", valueOf(kPageSets, static_cast<int>(settings.get_page_set()))});
  if (settings.get_print_pages() == Gtk::PrintPages::RANGES) {
    refuseNoPages(settings);
    setOption(options, {"page-ranges", pageRangesText(pageRangesOf(settings))});
  }

  const auto& setup = *tabs.setup;
  setOption(options,
            {"orientation-requested", valueOf(kOrientations, static_cast<int>(setup.get_orientation()))});
  auto paper = setup.get_paper_size();
  if (printersPaper == nullptr ||
      gtk_paper_size_is_equal(paper.gobj(), const_cast<GtkPaperSize*>(printersPaper)) == FALSE)
    addPaper(options, paperOption(paper));
}

}  // namespace tandemtrim::host
