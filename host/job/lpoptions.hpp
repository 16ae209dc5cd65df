#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A printer, or a user's instance of it, as CUPS's file lpoptions names it. Letter case is ignored.
struct DestinationName {
  std::string printer;
  std::optional<std::string> instance;
};

/// Which of a destination's lines in one file count.
enum class SavedLines { first, all };

/// The options that libcups reads for the destination from the texts of its files; a later text overrides an
/// earlier one. Without a destination, those of all printers, but not of their instances.
Options savedOptions(std::span<const std::string> texts, const std::optional<DestinationName>& destination,
                     SavedLines lines);

/// The destination that the text of the file makes the default; nullopt if it names none.
std::optional<DestinationName> defaultDestination(std::string_view text);

/// The text of the file with these options set for the destination, replacing earlier ones of the same
/// keywords, and without options of the keywords in `removed`. All of the destination's lines change, since
/// some functions of libcups read only the first and others all. All other lines stay the same, byte for
/// byte. nullopt if a line becomes too long for CUPS to read back whole.
std::optional<std::string> withSavedOptions(std::string_view text, const DestinationName& destination,
                                            const Options& options,
                                            const std::vector<std::string>& removed = {});

/// The text of the file without any option of the destination. All other lines stay the same; a default
/// destination stays the default.
std::string withoutSavedOptions(std::string_view text, const DestinationName& destination);

}  // namespace tandemtrim::host
