#include "host/cups/saved_defaults.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <span>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

#include "host/cups/connection/cups_handles.hpp"
#include "host/failure.hpp"
#include "host/home_folder.hpp"
#include "host/job/lpoptions.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnFolder = 0700;
constexpr const char* kServerRoot = "/etc/cups";
// The first bytes of a file packed by gzip, which libcups would unpack.
constexpr std::string_view kPacked = "\x1F\x8B";

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
          "CUPS cannot save the value of [option] as a default (it must not be empty or very long, or contain # or control characters)"_fact,
          {{"[option]", keyword}}),
      "; give another with -o " + keyword + "=...");
}

Failure stillSaved(const std::string& keyword) {
  return Failure(Trouble::notKeptForAllJobs,
                 Fact("the old default of [option] is still in use"_fact, {{"[option]", keyword}}));
}

Failure cannotChange(const Printer& printer, const Failure& reason) {
  return Failure(Trouble::notKeptForAllJobs,
                 Fact("the defaults for [printer] cannot be changed: [reason]"_fact,
                      {{"[printer]", nameWithInstance(printer)}, {"[reason]", reason.fact()}}));
}

const Option& longestOf(const Options& options) {
  return *std::ranges::max_element(
      options, {}, [](const Option& option) { return option.keyword.size() + option.value.size(); });
}

DestinationName nameOf(const Printer& printer) { return {printer.name, printer.instance}; }

// The file that libcups reads. It ignores CUPS_SERVERROOT in a program that runs with the rights of another
// user than its caller.
fs::path systemDefaultsFile() {
  const char* const folder = secure_getenv("CUPS_SERVERROOT");
  return std::string(folder == nullptr ? kServerRoot : folder) + "/lpoptions";
}

// Whether the file is unreadable because it is in another user's home folder, as under sudo. That is no
// error.
bool isOfAnotherUser(const fs::path& file) {
  struct stat home {};
  return file == savedDefaultsFile() && access(file.c_str(), R_OK) != 0 && errno == EACCES &&
         stat(homeFolder().c_str(), &home) == 0 && home.st_uid != geteuid();
}

std::string defaultsIn(const fs::path& file) {
  if (isOfAnotherUser(file)) return {};
  try {
    auto text = readWholeFile(file).value_or("");
    if (text.starts_with(kPacked)) throw unreadableFile(file, "it is compressed with gzip");
    return text;
  } catch (const Failure& failure) {
    throw Failure(failure.trouble(), failure.fact(), "; nothing was sent. Make it readable, or move it away");
  }
}

DestinationHandle knownDestination(const Connection& connection, const Printer& printer) {
  auto known =
      connection.destination(printer.name.c_str(), printer.instance ? printer.instance->c_str() : nullptr);
  if (!known) throw connection.lastFailure();
  return known;
}

const char* valueOf(const Option& option, const cups_dest_t& destination) {
  return cupsGetOption(option.keyword.c_str(), destination.num_options, destination.options);
}

bool isSetIn(const cups_dest_t& destination, const Option& option) {
  const char* const value = valueOf(option, destination);
  return value != nullptr && option.value == value;
}

// Whether the server itself supplies this value, so that the option needs no entry.
bool isFromServer(const Option& option, const Printer& printer, const cups_dest_t& destination) {
  return isSetIn(destination, option) && std::ranges::none_of(printer.saved, [&](const Option& saved) {
           return isSameKeyword(saved.keyword, option.keyword);
         });
}

bool isForAllUsers(const Option& option, const Printer& printer) {
  return std::ranges::any_of(printer.savedForAllUsers, [&](const Option& saved) {
    return isSameKeyword(saved.keyword, option.keyword) && saved.value == option.value;
  });
}

void writeEntries(const Printer& printer, const Options& entries, const Options& removed) {
  try {
    editFile(savedDefaultsFile(), [&](const std::string& text) {
      auto changed = withSavedOptions(text, nameOf(printer), entries, keywordsOf(removed));
      if (!changed) throw cannotKeep(longestOf(entries.empty() ? removed : entries).keyword);
      return *std::move(changed);
    });
  } catch (const Failure& failure) {
    if (failure.trouble() == Trouble::notKeptForAllJobs) throw;
    throw cannotChange(printer, failure);
  }
}

// Asks libcups afterwards for all that has changed.
void changeDefaults(const Connection& connection, const Printer& printer, const Options& options,
                    const Options& removed) {
  auto entries = options;
  const auto before = knownDestination(connection, printer);
  std::erase_if(entries, [&](const Option& option) { return isFromServer(option, printer, *before); });
  if (!entries.empty() || !removed.empty()) writeEntries(printer, entries, removed);

  const auto after = knownDestination(connection, printer);
  for (const auto& option : options)
    if (!isSetIn(*after, option)) throw cannotKeep(option.keyword);
  for (const auto& option : removed)
    if (isSetIn(*after, option) && !isForAllUsers(option, printer)) throw stillSaved(option.keyword);
}

}  // namespace

fs::path savedDefaultsFile() { return homeFolder().string() + "/.cups/lpoptions"; }

std::array<std::string, 2> savedDefaults() {
  return {defaultsIn(systemDefaultsFile()), defaultsIn(savedDefaultsFile())};
}

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
  changeDefaults(connection, printer, options, {});
}

void replaceDefaults(const Connection& connection, const Printer& printer, const Options& options,
                     const std::vector<std::string>& untouched) {
  auto others = withoutKeywords(withoutThoseOfOneJob(printer.saved), untouched);
  changeDefaults(connection, printer, options, withoutKeywords(std::move(others), keywordsOf(options)));
}

Options resetDefaults(const Printer& printer) {
  Options gone;
  try {
    editFile(savedDefaultsFile(), [&](const std::string& text) {
      gone = savedOptions(std::span(&text, 1), nameOf(printer), SavedLines::all);
      return withoutSavedOptions(text, nameOf(printer));
    });
  } catch (const Failure& failure) {
    throw cannotChange(printer, failure);
  }
  return gone;
}

}  // namespace tandemtrim::host
