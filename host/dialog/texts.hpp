#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "host/panel_session.hpp"

/// The texts that the dialog's host shows itself, in the person's language; the panel brings its own. They
/// are in the bundle that lies beside the dialog's module. Each name holds the English text, which is the key
/// of the others and stands in where one is missing. The underscore of a mnemonic is part of it.
namespace tandemtrim::host {

inline constexpr const char* kCorrectText = "C_orrect";
inline constexpr const char* kSendAsItIsText = "_Send As It Is";
inline constexpr const char* kBackText = "_Back";
inline constexpr const char* kCloseText = "_Close";
inline constexpr const char* kHelpText = "_Help";
inline constexpr const char* kUseForAllJobsText = "_Use for all my jobs";
inline constexpr const char* kSummaryText = "Summary";
inline constexpr const char* kReadingText = "The printer's details are being read.";
inline constexpr const char* kUnavailableText = "Tandem Trim settings are not available.";
inline constexpr const char* kChoosePrinterText =
    "Choose a printer: the document is sent as it is, so it cannot be printed to a file.";
inline constexpr const char* kNoPagesText = "Type the numbers of the pages to print, or choose all pages.";
inline constexpr const char* kSendingText = "Sending…";
inline constexpr const char* kIllegalValueText =
    "[name]: this printer does not allow [value] (allowed: [allowed])";
inline constexpr const char* kHelpPageText =
    "Turn Tandem Trim on to have the printer trim the sheet. The margins are whole millimetres; beside each "
    "stands "
    "what the printer allows. \"Use for all my jobs\" keeps the settings as your defaults for this printer.";

inline constexpr std::array kTexts{kCorrectText,      kSendAsItIsText,    kBackText,    kCloseText,
                                   kHelpText,         kUseForAllJobsText, kSummaryText, kReadingText,
                                   kUnavailableText,  kChoosePrinterText, kNoPagesText, kSendingText,
                                   kIllegalValueText, kHelpPageText};

/// The text in the person's language.
std::string localized(std::string_view text);

/// A line for each value: what it is, what the printer allows.
std::string illegalValuesText(const std::vector<IllegalValue>& values);

}  // namespace tandemtrim::host
