#pragma once

#include <optional>
#include <string>

#include <gtkmm/papersize.h>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The paper of this name, as the PPD or CUPS itself calls it ("A3", "iso_a3_297x420mm"), or nullopt. `ppd`
/// is null for a printer without one.
std::optional<Gtk::PaperSize> paperNamed(const std::string& name, ppd_file_t* ppd);

/// The paper that the options choose by PageSize or as a part of media, or nullopt.
std::optional<Gtk::PaperSize> paperAskedFor(const Options& options, ppd_file_t* ppd);

/// The default paper of a printer with this PPD, or nullopt.
std::optional<Gtk::PaperSize> defaultPaper(ppd_file_t* ppd);

/// The option by which a job chooses the paper.
Option paperOption(const Gtk::PaperSize& paper);

/// The value of a media option without the names of papers: its trays and types.
std::string mediaWithoutPaper(const std::string& media, ppd_file_t* ppd);

}  // namespace tandemtrim::host
