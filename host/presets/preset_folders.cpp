#include "host/presets/preset_folders.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/home_folder.hpp"
#include "host/plain_text.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEnding = ".json";
constexpr std::size_t kMostBytes = 1 << 20;
// In bytes; leaves room for the endings that are appended when the file is replaced or set aside.
constexpr std::size_t kLongestName = 200;

// The name in bytes that every file system accepts. A dot at the beginning, which would hide the file, is
// escaped.
std::string escapedName(const std::string& name) {
  constexpr std::string_view kReserved = "%/\\:*?\"<>|";
  std::string escaped;
  for (const char byte : name) {
    const bool isHidden = escaped.empty() && byte == '.';
    if (!isHidden && kReserved.find(byte) == std::string_view::npos) {
      escaped += byte;
      continue;
    }
    std::array<char, 4> code{};
    std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned char>(byte));
    escaped += code.data();
  }
  return escaped;
}

// The name with this escaped form; nullopt if no name has it.
std::optional<std::string> unescapedName(const std::string& escaped) {
  std::string name;
  for (std::size_t at = 0; at < escaped.size(); ++at) {
    unsigned code = 0;
    if (escaped[at] != '%') {
      name += escaped[at];
    } else if (std::sscanf(escaped.c_str() + at, "%%%2x", &code) == 1) {
      name += static_cast<char>(code);
      at += 2;
    }
  }
  return escapedName(name) == escaped ? std::optional(name) : std::nullopt;
}

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

fs::path ownFolder(const std::string& family) {
  // By the XDG rules a relative path is ignored.
  const fs::path configured = variable("XDG_CONFIG_HOME");
  const auto base = configured.is_absolute() ? configured : homeFolder() / ".config";
  return base / "tandem-trim/presets" / escapedName(family);
}

Fact notUnderstood(const fs::path& file, const std::string& reason) {
  return {"the preset in " + file.string() + " cannot be understood (" + reason + ')',
          "the preset in [file] cannot be understood"_fact,
          {{"[file]", file.string()}}};
}

Preset presetIn(const std::string& name, const std::string& text) {
  refuseWrongPresetName(name);
  return presetFrom(name, text);
}

bool isPreset(const std::string& name, const fs::path& file) {
  try {
    static_cast<void>(presetIn(name, readWholeFile(file, kMostBytes).value_or("")));
    return true;
  } catch (const Failure&) {
    return false;
  }
}

// Renames unless the new name exists (EEXIST). A hard link does the same on network file systems without
// RENAME_NOREPLACE.
bool renameToFree(const fs::path& from, const fs::path& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  return errno == EINVAL && link(from.c_str(), to.c_str()) == 0 && unlink(from.c_str()) == 0;
}

// Returns the new name; on failure nullopt, with the reason in errno.
std::optional<fs::path> renameAside(const fs::path& file) {
  for (int number = 1;; ++number) {
    auto aside = file;
    aside += ".damaged" + (number == 1 ? "" : '-' + std::to_string(number));
    if (renameToFree(file, aside)) return aside;
    if (errno != EEXIST) return std::nullopt;
  }
}

// Skips names that `presets` has already, which hide those of this folder.
void addFrom(const fs::path& folder, bool isOwn, std::map<std::string, KeptPreset>& presets,
             std::vector<PresetFault>& faults) {
  std::error_code unreadable;
  for (fs::directory_iterator entry(folder, unreadable), end; !unreadable && entry != end;
       entry.increment(unreadable)) {
    const auto& file = entry->path();
    const auto name = unescapedName(file.stem());
    if (file.extension() != kEnding || !name || presets.contains(*name)) continue;
    bool isRead = false;
    try {
      const auto text = readWholeFile(file, kMostBytes);
      isRead = true;
      if (text) presets.emplace(*name, KeptPreset{presetIn(*name, *text), isOwn});
    } catch (const Failure& failure) {
      faults.push_back(
          {*name, file, isRead ? notUnderstood(file, failure.what()) : failure.fact(), isRead, isOwn});
    }
  }
  const bool isMissing =
      unreadable == std::errc::no_such_file_or_directory || unreadable == std::errc::not_a_directory;
  if (unreadable && !isMissing)
    faults.push_back({"", folder, unreadableFile(folder, unreadable.message()).fact(), false, isOwn});
}

Failure unknownPreset(const std::string& name, const std::vector<KeptPreset>& presets) {
  std::string known;
  for (const auto& each : presets) known += (known.empty() ? "" : ", ") + shortText(each.preset.name);
  return {Trouble::other, Fact("there is no preset [name]"_fact, {{"[name]", shortText(name)}}),
          "; " + (known.empty() ? "there are no presets for these printers" : "there are: " + known)};
}

KeptPreset findKept(const std::string& family, const std::string& name, const Report& report) {
  const auto [presets, faults] = presetsOf(family);
  for (const auto& fault : faults) {
    if (!fault.isOwn && fault.name != name) continue;
    if (const auto fact = setAside(fault)) report(fact->english());
  }
  const auto found = std::ranges::find(presets, name, [](const auto& kept) { return kept.preset.name; });
  if (found == presets.end()) throw unknownPreset(name, presets);
  return *found;
}

void requireOwn(const std::string& family, const std::string& name, const Report& report) {
  if (!findKept(family, name, report).isOwn)
    throw Failure(Trouble::other,
                  Fact("the preset [name] is the administrator's"_fact, {{"[name]", shortText(name)}}),
                  "; save one of your own under that name instead");
}

// The subfolder with a file for each printer, which names the preset that the dialog starts with there.
constexpr const char* kPrinters = "printers";

fs::path printersFile(const std::string& family, const std::string& printersKey) {
  return ownFolder(family) / kPrinters / (escapedName(printersKey) + std::string(kEnding));
}

// On each printer where the dialog starts with this preset, it then starts with the new one or, for nullopt,
// without one.
void replaceForPrinters(const std::string& family, const std::string& name,
                        const std::optional<std::string>& newName) {
  std::error_code unreadable;
  for (fs::directory_iterator entry(ownFolder(family) / kPrinters, unreadable), end;
       !unreadable && entry != end; entry.increment(unreadable)) {
    const auto printersKey = unescapedName(entry->path().stem());
    if (printersKey && presetOfPrinter(family, *printersKey) == name)
      setPresetOfPrinter(family, *printersKey, newName);
  }
}

void makeFolder(const fs::path& folder) {
  std::error_code failed;
  fs::create_directories(folder, failed);
  errno = failed.value();
  if (failed) throw unwritableFile(folder);
}

FileDescriptor lockFolder(const std::string& family) {
  const auto folder = ownFolder(family);
  makeFolder(folder);
  return lockFile(folder);
}

// Compares parsed presets, since a user may have written the text by hand.
bool isTextOf(const std::optional<Preset>& preset, const std::string& text) {
  try {
    return preset && presetFrom("", text) == presetFrom("", presetText(*preset));
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace

std::vector<fs::path> administratorsFolders(const std::string& family) {
  std::vector<fs::path> folders;
  auto paths = variable("XDG_CONFIG_DIRS");
  if (paths.empty()) paths = "/etc/xdg";
  for (std::size_t start = 0; start <= paths.size();) {
    const auto end = std::min(paths.find(':', start), paths.size());
    const fs::path folder = paths.substr(start, end - start);
    if (folder.is_absolute()) folders.push_back(folder / "tandem-trim/presets" / escapedName(family));
    start = end + 1;
  }
  return folders;
}

void refuseWrongPresetName(const std::string& name) {
  if (name.find_first_not_of(' ') == std::string::npos)
    throw Failure("a preset needs a name", kWrongCommandLine);
  if (plainText(name) != name)
    throw Failure("a preset cannot be named " + shortText(name) + "; leave control characters out",
                  kWrongCommandLine);
  if (escapedName(name).size() > kLongestName)
    throw Failure("the name of a preset is too long: " + shortText(name), kWrongCommandLine);
}

fs::path presetFile(const std::string& family, const std::string& name) {
  return ownFolder(family) / (escapedName(name) + std::string(kEnding));
}

KeptPresets presetsOf(const std::string& family) {
  KeptPresets kept;
  std::map<std::string, KeptPreset> byName;
  addFrom(ownFolder(family), true, byName, kept.faults);
  for (const auto& folder : administratorsFolders(family)) addFrom(folder, false, byName, kept.faults);
  kept.presets.reserve(byName.size());
  for (auto& [name, preset] : byName) kept.presets.push_back(std::move(preset));
  return kept;
}

// Another program may have saved a good preset before the renaming. Then that file gets its name back, unless
// there is an even newer one.
std::optional<Fact> setAside(const PresetFault& fault) {
  if (!fault.isOwn || !fault.isDamaged) return fault.fact;
  const auto aside = renameAside(fault.file);
  if (!aside) return errno == ENOENT ? std::nullopt : std::optional(fault.fact);
  if (isPreset(fault.name, *aside)) {
    if (!renameToFree(*aside, fault.file) && errno == EEXIST) unlink(aside->c_str());
    return std::nullopt;
  }
  return Fact(fault.fact.english() + "; the file is now " + aside->string(),
              "the preset in [file] cannot be understood; the file is now [aside]"_fact,
              {{"[file]", fault.file.string()}, {"[aside]", aside->string()}});
}

Preset findPreset(const std::string& family, const std::string& name, const Report& report) {
  return findKept(family, name, report).preset;
}

void savePreset(const std::string& family, const Preset& preset) {
  refuseWrongPresetName(preset.name);
  const auto file = presetFile(family, preset.name);
  const auto lock = lockFolder(family);
  replaceFile(file, presetText(preset));
}

bool savePresetOver(const std::string& family, const std::optional<Preset>& known, const Preset& preset) {
  refuseWrongPresetName(preset.name);
  const auto file = presetFile(family, preset.name);
  const auto lock = lockFolder(family);
  const auto text = readWholeFile(file, kMostBytes);
  if (text && !isTextOf(known, *text)) return false;
  replaceFile(file, presetText(preset));
  return true;
}

std::optional<std::string> presetOfPrinter(const std::string& family, const std::string& printersKey) {
  try {
    const auto text = readWholeFile(printersFile(family, printersKey), kMostBytes);
    return text ? presetNamedIn(*text) : std::nullopt;
  } catch (const Failure&) {
    return std::nullopt;
  }
}

void setPresetOfPrinter(const std::string& family, const std::string& printersKey,
                        const std::optional<std::string>& name) {
  const auto file = printersFile(family, printersKey);
  if (name) {
    makeFolder(file.parent_path());
    return replaceFile(file, textNamingPreset(*name));
  }
  if (unlink(file.c_str()) != 0 && errno != ENOENT) throw unwritableFile(file);
}

void deletePreset(const std::string& family, const std::string& name, const Report& report) {
  requireOwn(family, name, report);
  const auto file = presetFile(family, name);
  if (unlink(file.c_str()) != 0) throw unwritableFile(file);
  replaceForPrinters(family, name, std::nullopt);
}

void renamePreset(const std::string& family, const std::string& name, const std::string& newName, Taken taken,
                  const Report& report) {
  requireOwn(family, name, report);
  refuseWrongPresetName(newName);
  const auto from = presetFile(family, name);
  const auto to = presetFile(family, newName);
  const auto lock = lockFolder(family);
  const bool isRenamed =
      taken == Taken::refuses ? renameToFree(from, to) : std::rename(from.c_str(), to.c_str()) == 0;
  if (isRenamed) return replaceForPrinters(family, name, newName);
  if (errno != EEXIST) throw unwritableFile(to);
  throw Failure(Trouble::other,
                Fact("there is a preset [name] already"_fact, {{"[name]", shortText(newName)}}),
                "; choose another name");
}

}  // namespace tandemtrim::host
