#include "host/applications/session.hpp"

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

#include "host/applications/command.hpp"
#include "host/failure.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr std::chrono::seconds kLongestAnswer{10};
// Longer than the bus waits, so that it can report the reason.
constexpr std::chrono::seconds kLongestCommand = kLongestAnswer + std::chrono::seconds(2);

std::optional<std::string> ownVariable(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

// The environment that the process was started with; empty where it cannot be read.
std::map<std::string, std::string> environmentOf(int process) {
  std::map<std::string, std::string> variables;
  std::ifstream environment("/proc/" + std::to_string(process) + "/environ", std::ios::binary);
  for (std::string entry; std::getline(environment, entry, '\0');) {
    const auto equals = entry.find('=');
    if (equals != std::string::npos) variables[entry.substr(0, equals)] = entry.substr(equals + 1);
  }
  return variables;
}

CommandResult askBus(const std::string& service, const std::string& path, const std::string& method,
                     const std::vector<std::string>& texts) {
  const auto limit = std::to_string(std::chrono::milliseconds(kLongestAnswer).count());
  std::vector<std::string> words{
      "dbus-send", "--session", "--print-reply=literal", "--reply-timeout=" + limit, "--dest=" + service,
      path,        method};
  for (const auto& text : texts) words.push_back("string:" + text);
  return runCommand(words, kLongestCommand);
}

// Why there is no answer, on one line.
std::string whyNoAnswer(const CommandResult& answer) {
  if (!answer.inTime) return "no answer within 12 seconds";
  return answer.said.substr(0, answer.said.find('\n'));
}

std::optional<int> processOf(const std::string& service) {
  constexpr std::string_view kType = "uint32 ";
  const auto answer = askBus("org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus.GetConnectionUnixProcessID", {service});
  const auto type = answer.said.find(kType);
  if (!answer.succeeded || type == std::string::npos) return std::nullopt;
  int process = 0;
  const char* const number = answer.said.data() + type + kType.size();
  const auto [end, error] = std::from_chars(number, answer.said.data() + answer.said.size(), process);
  return error == std::errc() && process > 0 ? std::optional(process) : std::nullopt;
}

// The program that the bus starts for the service.
std::optional<std::string> programOf(const std::string& service, const PortalPlaces& places) {
  auto folders = places.dataFolders;
  folders.insert(folders.begin(), places.dataHome);
  if (const auto run = ownVariable("XDG_RUNTIME_DIR")) folders.insert(folders.begin(), *run);
  for (const auto& folder : folders) {
    const auto entries = entriesOf(folder / "dbus-1/services" / (service + ".service"));
    if (!entries) continue;
    const auto words = partsOf(valueOf(*entries, "D-BUS Service", "Exec").value_or(""), ' ');
    if (!words.empty()) return words.front();
  }
  return std::nullopt;
}

std::optional<std::string> sessionBusProblem() {
  const auto address = ownVariable("DBUS_SESSION_BUS_ADDRESS");
  std::error_code unreadable;
  // Without a bus, dbus-send would start a new one, which no application uses.
  const bool hasAddress = address && !address->empty();
  if (!hasAddress &&
      !fs::exists(ownVariable("XDG_RUNTIME_DIR").value_or("/nonexistent") + "/bus", unreadable))
    return "there is no session bus (DBUS_SESSION_BUS_ADDRESS is not set); run this within the desktop's "
           "session";
  const auto answer =
      askBus("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.GetId", {});
  if (answer.succeeded) return std::nullopt;
  if (!answer.isInstalled)
    return "the session bus cannot be asked: dbus-send is not installed; install the package dbus-bin";
  return "the session bus does not answer (" + whyNoAnswer(answer) +
         "); run this within the desktop's session";
}

}  // namespace

Portal lookAtPortal() {
  Portal portal;
  portal.places = portalPlaces(ownVariable);
  portal.busProblem = sessionBusProblem();
  if (!portal.busProblem) portal.process = processOf(kPortalService);
  const auto program = programOf(kPortalService, portal.places);
  portal.isInstalled = program || portal.process;
  if (program) portal.version = versionIn(runCommand({*program, "--version"}, kLongestAnswer).said);
  if (!portal.process) return portal;
  const auto variables = environmentOf(*portal.process);
  if (variables.empty()) return portal;
  portal.places = portalPlaces([&](const std::string& name) -> std::optional<std::string> {
    const auto variable = variables.find(name);
    return variable == variables.end() ? std::nullopt : std::optional(variable->second);
  });
  return portal;
}

std::optional<std::string> interfaceProblem(const std::string& service, const std::string& interface) {
  const auto answer = askBus(service, kPath, "org.freedesktop.DBus.Properties.Get", {interface, "version"});
  if (answer.succeeded) return std::nullopt;
  return whyNoAnswer(answer);
}

bool isNewerThan(const fs::path& file, int process) {
  struct stat status {};
  std::ifstream line("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  if (stat(file.c_str(), &status) != 0 || !std::getline(line, text)) return false;
  // The program's name, in parentheses, may contain blanks. The start is the 20th field after it, in ticks
  // since the system started.
  std::istringstream fields(text.substr(text.rfind(')') + 1));
  std::string field;
  for (int index = 0; index < 19; ++index) fields >> field;
  double ticks = 0;
  if (!(fields >> ticks)) return false;
  const auto seconds = [](const timespec& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
  };
  timespec now{};
  timespec sinceStart{};
  clock_gettime(CLOCK_REALTIME, &now);
  clock_gettime(CLOCK_BOOTTIME, &sinceStart);
  const auto start = seconds(now) - seconds(sinceStart) + ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
  return seconds(status.st_ctim) > start;
}

}  // namespace tandemtrim::host
