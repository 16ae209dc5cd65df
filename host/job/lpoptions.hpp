#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A printer, or a user's instance of it, as CUPS's file lpoptions names it. Letter case does not count.
struct DestinationName {
  std::string printer;
  std::optional<std::string> instance;
};

/// The text of the file with these options set for the destination, in the place of earlier ones of the same
/// keywords; in each of its lines where there are several, of which libcups reads the first or all. All other
/// lines stay as they are, byte for byte. None when CUPS would not read the options back whole, since their
/// line is too long.
std::optional<std::string> withSavedOptions(std::string_view text, const DestinationName& destination,
                                            const Options& options);

/// The text of the file without any option of the destination. All other lines stay as they are; a default
/// destination stays the default one.
std::string withoutSavedOptions(std::string_view text, const DestinationName& destination);

/// The options that the text of the file holds for the destination.
Options optionsSavedIn(std::string_view text, const DestinationName& destination);

}  // namespace tandemtrim::host
