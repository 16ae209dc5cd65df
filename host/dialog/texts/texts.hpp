#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/failure.hpp"
#include "host/panel/conflicts.hpp"
#include "host/panel/panel_session.hpp"
#include "host/progress_text.hpp"

/// The texts that the dialog's host shows itself, in the user's language; the panel has its own. They
/// are in the bundle beside the dialog's module. Each constant is the English text, which is the key of the
/// translations and replaces a missing one. The underscore of a mnemonic is part of it.
namespace tandemtrim::host {

inline constexpr const char* kCorrectText = "C_orrect";
inline constexpr const char* kPrintAsItIsText = "_Print Anyway";
inline constexpr const char* kNotAllowedText = "The printer does not allow these settings";
inline constexpr const char* kCloseText = "_Close";
inline constexpr const char* kTryAgainText = "_Try Again";
inline constexpr const char* kCancelText = "_Cancel";
/// The name of the button beside the progress.
inline constexpr const char* kCancelJobText = "Cancel the job";
inline constexpr const char* kContinueText = "C_ontinue";
inline constexpr const char* kLoginTitleText = "Log In";
inline constexpr const char* kLoginText =
    "[server] requires a user name and a password. They are not stored.";
inline constexpr const char* kLoginAgainText =
    "[server] did not accept this user name and password. Type them again.";
inline constexpr const char* kUserText = "_User name";
inline constexpr const char* kPasswordText = "_Password";
inline constexpr const char* kHelpText = "_Help";
inline constexpr const char* kUseForAllJobsText = "_Use for all my jobs";
inline constexpr const char* kNotifyText = "_Notify after printing";
inline constexpr const char* kSummaryText = "Summary";
inline constexpr const char* kReadingText = "The printer's details are being read.";
/// The title of the panel's page until the panel's own is known.
inline constexpr const char* kPageTitleText = "Printer Settings";
inline constexpr const char* kUnavailableText = "The printer's own settings are not available.";
inline constexpr const char* kChoosePrinterText = "Choose a printer.";
inline constexpr const char* kSavingText = "Saving…";
inline constexpr const char* kWholeFileText =
    "A file always contains the whole document unchanged. Choose all pages and one page per side, or choose "
    "a printer.";
inline constexpr const char* kNoFileText =
    "[file] is a folder or a device, which is not replaced. Choose another name.";
inline constexpr const char* kNotSavedText =
    "The document could not be saved as [file]. An existing file is unchanged. Choose another place, or make "
    "room there.\n[reason]";
inline constexpr const char* kNotConvertedText =
    "The document could not be converted to [format]. Choose a printer, or save the document as a PDF file "
    "and print that.";
inline constexpr const char* kProtectedText =
    "The document is protected by a password and cannot be converted to [format]. Save it without the "
    "password, or save this file as PDF.";
/// For a document that another program has laid out as the user chose.
inline constexpr const char* kLaidOutText =
    "The program has already laid out the document. Choose the pages, scale and orientation as they were, or "
    "print from the program again.";
/// The name of a document that has none.
inline constexpr const char* kDocumentText = "Document";
inline constexpr const char* kNoPagesText = "Type the numbers of the pages to print, or choose all pages.";
inline constexpr const char* kWrongPagesText =
    "\"[text]\" is not a valid page range. Type page numbers such as 1-3,5, or choose all pages.";
inline constexpr const char* kWrongTimeText =
    "\"[text]\" is not a time of day. Type one such as 14:30, or choose to print now.";
inline constexpr const char* kSendingText = "Sending…";
/// The name of a document beside the progress once the server has its job.
inline constexpr const char* kOfJobText = "[name] (job [number])";
inline constexpr const char* kIllegalValueText =
    "[name]: this printer does not allow [value] (allowed: [allowed])";
inline constexpr const char* kConflictText =
    "[name] ([value]) cannot be combined with [other] ([choice]) on this printer.";
/// The title of the paper among options that cannot be combined.
inline constexpr const char* kPaperText = "Paper size";
inline constexpr const char* kRangeText = "[min] to [max]";
inline constexpr const char* kListSeparatorText = ", ";

/// The row of presets above the panel, its menu and its questions.
inline constexpr const char* kPresetText = "Preset";
inline constexpr const char* kNoPresetText = "None";
inline constexpr const char* kChangedPresetText = "[name], changed";
inline constexpr const char* kSavePresetText = "Save";
inline constexpr const char* kBackToPresetText = "Revert to Preset";
inline constexpr const char* kSavePresetAsText = "Save As…";
inline constexpr const char* kRenamePresetText = "Rename…";
inline constexpr const char* kDeletePresetText = "Delete…";
inline constexpr const char* kPresetOfPrinterText = "Use by Default on This Printer";
inline constexpr const char* kPresetNameText = "_Name of the preset";
inline constexpr const char* kPresetWithPagesText = "_With the settings of the other pages";
inline constexpr const char* kNoSuchPresetText = "There is no preset [name] for this printer.";
inline constexpr const char* kPresetChangedMeanwhileText =
    "The preset [name] was changed by another program. Replace it?";
inline constexpr const char* kPresetTakenText = "There is a preset [name] already. Replace it?";
inline constexpr const char* kReplaceText = "_Replace";
inline constexpr const char* kDeleteThisPresetText = "Delete the preset [name]?";
inline constexpr const char* kDeleteText = "_Delete";
inline constexpr const char* kPresetsUnchangedText = "The presets could not be changed.";

/// The headings of the desktop's notifications about a job.
inline constexpr const char* kJobConfirmedText = "Job [number] on [printer]: all settings confirmed";
inline constexpr const char* kJobLostSettingsText = "Job [number] on [printer]: settings lost";
inline constexpr const char* kJobUnconfirmedText = "Job [number] on [printer]: settings not confirmed";
inline constexpr const char* kJobCancelledText = "Job [number] on [printer] was cancelled";
inline constexpr const char* kJobFailedText = "Job [number] on [printer] failed";

/// The page of the document in the picture of the sheet.
inline constexpr const char* kPageNumberText = "Page [page] of [pages]";
inline constexpr const char* kPreviousPageText = "Previous page";
inline constexpr const char* kNextPageText = "Next page";

/// What the user can do about each trouble.
inline constexpr std::array kTroubleTexts{
    std::pair{Trouble::other, "That did not work. Try again, or choose another printer."},
    std::pair{Trouble::plugin,
              "The printer's plug-in is missing or does not work. Print without these settings, or have the "
              "plug-in installed again."},
    std::pair{Trouble::noServer,
              "The print server cannot be used at present. Make sure that it is running and can be reached, "
              "then try again."},
    std::pair{Trouble::unauthorized,
              "The print server requires a password and accepted none. Try again, or ask its "
              "administrator."},
    std::pair{Trouble::notAllowed,
              "The print server does not allow this. Ask its administrator, or choose another printer."},
    std::pair{Trouble::insecure,
              "The connection to the print server cannot be trusted. Ask its administrator."},
    std::pair{Trouble::noPrinter, "The print server does not have this printer. Choose another printer."},
    std::pair{Trouble::noDefaultPrinter, "There is no default printer. Choose a printer."},
    std::pair{Trouble::rejecting,
              "The printer does not accept jobs at present. Choose another printer, or try again later."},
    std::pair{Trouble::stopped,
              "The printer is stopped. Choose another printer, or have it started and try again."},
    std::pair{Trouble::details,
              "The printer's details could not be read. Try again later, or choose another printer."},
    std::pair{Trouble::format,
              "The printer cannot print documents of this kind. Choose another printer, or save the document "
              "as a PDF file and print that."},
    std::pair{Trouble::document, "The document cannot be printed. Check it, then try again."},
    std::pair{Trouble::unconfirmedJob,
              "The print server did not confirm the job, which may still be printed. Look for it in the "
              "printer's queue before you print again."},
    std::pair{Trouble::unconfirmedSettings,
              "The job was sent, but the print server did not confirm its settings. Check the printout."},
    std::pair{
        Trouble::lostSettings,
        "The job was sent, but the print server did not accept all of its settings. Check the printout."},
    std::pair{Trouble::notKeptForAllJobs,
              "The job was sent, but its settings could not be kept for all your jobs. Choose them again for "
              "the next job."},
    std::pair{
        Trouble::notRemembered,
        "The job was sent, but its settings could not be remembered. Choose them again for the next job."}};

/// The help about what the dialog's host adds to each panel.
inline constexpr std::array kHelpTexts{
    "\"Use for all my jobs\" keeps the settings as your defaults for this printer.",
    "\"Notify after printing\" shows a notification with what the print server has of the job, and says "
    "whether the job is cancelled or fails within a minute.",
    "\"Preset\" keeps settings under a name, for all printers with this page. Its menu saves them, restores "
    "them, and chooses those that the dialog starts with on this printer.",
    "The page \"Summary\" lists what will be sent. A line below the settings warns of values that this "
    "printer does not allow; \"Correct\" replaces them with the nearest allowed values."};

/// The text in the user's language.
std::string localized(std::string_view text);

/// A sentence for each value, with the values that the printer allows, as the panel shows them; then a
/// sentence for each conflict.
std::vector<std::string> problemTexts(const std::vector<IllegalValue>& values,
                                      const std::vector<Conflict>& conflicts);

/// What is wrong and what to do about it and, on a separate line, the fact itself.
std::string failureText(const Failure& failure);

/// The same for several, one below the other.
std::string failuresText(const std::vector<Failure>& failures);

/// The help about the panel of this bundle and about what the host adds to it.
std::string helpText(const PluginBundle& bundle);

}  // namespace tandemtrim::host
