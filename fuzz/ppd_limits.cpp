// The input is lines of a printer's PPD, after the lines that begin every PPD. However libcups reads them,
// each side's limit is the printer's, clamped to the property list's bounds.
#include <cups/ppd.h>
#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/support/panel.hpp"
#include "fuzz/support/target.hpp"
#include "fuzz/support/utf.hpp"

namespace tandemtrim::fuzz {
namespace {

constexpr std::string_view kBeginning =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n*PCFileName: \"FUZZED.PPD\"\n*Manufacturer: \"Morva\"\n"
    "*Product: \"(Fuzzed)\"\n*ModelName: \"Fuzzed\"\n*ShortNickName: \"Fuzzed\"\n*NickName: \"Fuzzed\"\n"
    "*PSVersion: \"(3010.000) 0\"\n";

using Ppd = std::unique_ptr<ppd_file_t, decltype(&ppdClose)>;

// All inputs use one file in memory. libcups closes the descriptor that it gets.
Ppd read(std::string_view lines) {
  static const int file = memfd_create("ppd", 0);
  const auto text = std::string(kBeginning).append(lines);
  const auto size = static_cast<off_t>(text.size());
  require(pwrite(file, text.data(), text.size(), 0) == size && ftruncate(file, size) == 0,
          "the PPD is written");
  lseek(file, 0, SEEK_SET);
  return {ppdOpenFd(dup(file)), ppdClose};
}

long long expectedLimit(ppd_file_t* ppd, const std::string& side) {
  const auto* attribute = ppdFindAttr(ppd, ("MVMaxTandemTrimMargin" + side).c_str(), nullptr);
  if (attribute == nullptr || attribute->value == nullptr || !isUtf8(attribute->value)) return kLimit;
  return integerHeldBetween(attribute->value, kSmallest, kLargest);
}

}  // namespace

void examine(std::string_view input) {
  const auto ppd = read(input);
  const auto job = std::make_shared<Job>(ppd.get());
  const auto panel = openPanel(job, std::make_shared<Resources>());
  require(panel != nullptr, "every PPD has its panel");
  job->settings.PMPrintSettingsSetValue("MVTandemTrim", "On", false);
  auto& view = viewOf(*panel);
  panel->willShow();
  for (const auto& margin : kMargins) {
    const std::string side(margin.marginName);
    const auto limit = expectedLimit(ppd.get(), side);
    require(view.control("textBoxMargin" + side).max == static_cast<double>(limit),
            "the box's bound, " + side);
    require(view.control("stepperMargin" + side).max == static_cast<double>(limit),
            "the stepper's bound, " + side);
    for (const auto& [typed, shown] : {std::pair(limit, limit), {limit + 1, limit}}) {
      require(view.type(side, std::to_string(typed)), "the box is enabled");
      require(view.control(side).text == std::to_string(shown), "a typed number is limited, " + side);
    }
    panel->saveValuesAndReturnError(nullptr);
    require(job->stored("MV" + side + "Margin") == std::to_string(limit), "the limit is saved, " + side);
  }
}

}  // namespace tandemtrim::fuzz
