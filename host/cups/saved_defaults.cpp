#include "host/cups/saved_defaults.hpp"

#include <algorithm>
#include <cerrno>
#include <optional>

#include <sys/stat.h>
#include <unistd.h>

#include "host/failure.hpp"
#include "host/home_folder.hpp"
#include "host/job/lpoptions.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnFolder = 0700;

// The file has one line for each printer; in it, # begins a comment, and a keyword without a value is a
// switch.
bool fitsIntoLine(const std::string& value) {
  const auto breaksLine = [](char character) {
    return static_cast<unsigned char>(character) < ' ' || character == '#';
  };
  return !value.empty() && std::none_of(value.begin(), value.end(), breaksLine);
}

Failure cannotKeep(const std::string& keyword) {
  return Failure(
      Trouble::notKeptForAllJobs,
      Fact(
          "CUPS cannot keep the value of [option] as a default (it keeps none that is empty, is very long, or holds # or a line break)"_fact,
          {{"[option]", keyword}}),
      "; give another by -o " + keyword + "=...");
}

Failure cannotChange(const Printer& printer, const Failure& reason) {
  return Failure(Trouble::notKeptForAllJobs,
                 Fact("the defaults for [printer] cannot be changed: [reason]"_fact,
                      {{"[printer]", printer.name}, {"[reason]", reason.fact()}}));
}

DestinationName nameOf(const Printer& printer) {
  const char* const instance = printer.destination->instance;
  return {printer.name, instance == nullptr ? std::nullopt : std::optional<std::string>(instance)};
}

// Whether the server itself supplies this value, so that the option needs no entry.
bool isServers(const Option& option, const Printer& printer) {
  const auto& destination = *printer.destination;
  const char* const value =
      cupsGetOption(option.keyword.c_str(), destination.num_options, destination.options);
  return value != nullptr && option.value == value &&
         std::ranges::none_of(printer.saved, [&](const Option& saved) {
           return isSameKeyword(saved.keyword, option.keyword);
         });
}

void writeEntries(const Printer& printer, const Options& entries) {
  const auto& longest = *std::ranges::max_element(
      entries, {}, [](const Option& option) { return option.keyword.size() + option.value.size(); });
  try {
    editFile(savedDefaultsFile(), [&](const std::string& text) {
      auto changed = withSavedOptions(text, nameOf(printer), entries);
      if (!changed) throw cannotKeep(longest.keyword);
      return *std::move(changed);
    });
  } catch (const Failure& failure) {
    if (failure.trouble() == Trouble::notKeptForAllJobs) throw;
    throw cannotChange(printer, failure);
  }
}

}  // namespace

fs::path savedDefaultsFile() { return homeFolder().string() + "/.cups/lpoptions"; }

void editFile(const fs::path& file, const std::function<std::string(const std::string&)>& edit,
              std::chrono::milliseconds longest) {
  std::error_code unresolved;
  auto path = fs::weakly_canonical(file, unresolved);
  if (unresolved) path = file;
  mkdir(path.parent_path().c_str(), kOwnFolder);
  const auto lock = lockFile(path, longest);

  const auto before = readWholeFile(path).value_or("");
  const auto after = edit(before);
  if (after != before) replaceFile(path, after);
}

Options keepable(const Options& options) {
  auto kept = withoutThoseOfOneJob(options);
  for (const auto& [keyword, value] : kept) {
    if (!fitsIntoLine(value)) throw cannotKeep(keyword);
  }
  return kept;
}

void saveAsDefault(const Connection& connection, const Printer& printer, const Options& options) {
  auto entries = options;
  std::erase_if(entries, [&](const Option& option) { return isServers(option, printer); });
  if (!entries.empty()) writeEntries(printer, entries);

  const auto kept = connection.destination(printer.name.c_str(), printer.destination->instance);
  if (!kept) throw connection.lastFailure();
  for (const auto& [keyword, value] : options) {
    const char* const found = cupsGetOption(keyword.c_str(), kept->num_options, kept->options);
    if (found == nullptr || value != found) throw cannotKeep(keyword);
  }
}

void refuseUnreadDefaults(const Printer& printer) {
  const auto file = savedDefaultsFile();
  // The home folder may be another user's, as under sudo; nobody expects that user's defaults.
  if (access(file.c_str(), R_OK) != 0 && errno == EACCES) return;
  const auto saved = optionsSavedIn(readWholeFile(file).value_or(""), nameOf(printer));
  const auto& destination = *printer.destination;
  const bool isRead = std::ranges::any_of(saved, [&](const Option& option) {
    return cupsGetOption(option.keyword.c_str(), destination.num_options, destination.options) != nullptr;
  });
  if (!isRead && !saved.empty()) throw unreadableFile(file, "CUPS passes over it");
}

Options resetDefaults(const Printer& printer) {
  Options gone;
  try {
    editFile(savedDefaultsFile(), [&](const std::string& text) {
      gone = optionsSavedIn(text, nameOf(printer));
      return withoutSavedOptions(text, nameOf(printer));
    });
  } catch (const Failure& failure) {
    throw cannotChange(printer, failure);
  }
  return gone;
}

}  // namespace tandemtrim::host
