#include "host/dialog/settings/notification_choice.hpp"

#include <filesystem>

#include <glibmm/error.h>
#include <glibmm/keyfile.h>
#include <glibmm/miscutils.h>

#include "host/failure.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

constexpr const char* kGroupOfDialog = "Dialog";
constexpr const char* kNotify = "Notify";
constexpr std::size_t kLargestChoices = 1 << 16;

std::filesystem::path choicesFile() {
  return std::filesystem::path(Glib::get_user_config_dir()) / "tandem-trim/dialog.conf";
}

// The contents of the file; empty when it cannot be understood.
Glib::RefPtr<Glib::KeyFile> keptChoices() {
  auto groups = Glib::KeyFile::create();
  try {
    if (const auto text = readWholeFile(choicesFile(), kLargestChoices))
      groups->load_from_data(*text, Glib::KeyFile::Flags::KEEP_COMMENTS);
  } catch (const Failure&) {
    return Glib::KeyFile::create();
  } catch (const Glib::Error&) {
    return Glib::KeyFile::create();
  }
  return groups;
}

}  // namespace

bool wantsNotification() {
  try {
    return keptChoices()->get_boolean(kGroupOfDialog, kNotify);
  } catch (const Glib::Error&) {
    return true;
  }
}

void keepNotificationChoice(bool wants, const Report& report) {
  const auto groups = keptChoices();
  groups->set_boolean(kGroupOfDialog, kNotify, wants);
  const auto file = choicesFile();
  std::error_code unmade;
  std::filesystem::create_directories(file.parent_path(), unmade);
  try {
    replaceFile(file, groups->to_data());
  } catch (const Failure& failure) {
    report(failure.what());
  }
}

}  // namespace tandemtrim::host
