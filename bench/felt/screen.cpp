// Watches an X screen from outside, as a user does, and prints microseconds:
//   screen frame COMMAND...
//     from the command's start until its window is first drawn; then ends it
//   screen settle COMMAND...
//     the same until the last drawing before a second of quiet, and then the kilobytes of memory that the
//     command has written
//   screen click X Y COMMAND...
//     from a click at X and Y, when all is drawn, until a large part is drawn again, and until the last
//     drawing before a moment of quiet
//   screen changes X Y1 Y2 COMMAND...
//     the kilobytes of memory that the command writes during a hundred clicks at X, alternately at Y1 and Y2
// For a desktop portal's print backend with this name on the session bus:
//   screen started NAME...
//     from a request that starts it until its dialog is first drawn; then ends it
//   screen asked NAME...
//     from a later request until its dialog is first drawn
//   screen idle NAME...
//     the kilobytes of memory that it has written before the first request; then ends it
//   screen dialogs NAME...
//     the kilobytes of memory that it writes while a hundred dialogs open and close; then ends it
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <gio/gio.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kTimeout = 20'000;  // milliseconds
constexpr int kQuiet = 300;
constexpr int kSettled = 1'000;
constexpr int kSmallest = 200;     // pixels of a window that counts
constexpr int kChanged = 120;      // milliseconds of quiet after a change
constexpr int kFirstChanges = 20;  // after which the toolkit's caches are full
constexpr int kChanges = 100;
constexpr int kFirstDialogs = 20;
constexpr int kDialogs = 100;

[[noreturn]] void fail(const char* why) {
  std::fprintf(stderr, "screen: %s\n", why);
  std::exit(1);
}

class Screen {
 public:
  Screen() : display_(XOpenDisplay(nullptr)) {
    int error = 0;
    if (display_ == nullptr) fail("there is no X screen");
    if (XDamageQueryExtension(display_, &firstEvent_, &error) == 0)
      fail("the screen does not report what is drawn");
    XDamageCreate(display_, DefaultRootWindow(display_), XDamageReportRawRectangles);
    XSync(display_, False);
  }

  // Waits for the next drawing and sets its area and time; false after `timeout` milliseconds without one.
  bool next(XRectangle& area, Clock::time_point& when, int timeout) {
    while (true) {
      while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        if (event.type != firstEvent_ + XDamageNotify) continue;
        when = Clock::now();
        area = reinterpret_cast<XDamageNotifyEvent&>(event).area;
        return true;
      }
      pollfd connection{ConnectionNumber(display_), POLLIN, 0};
      if (poll(&connection, 1, timeout) <= 0) return false;
    }
  }

  // Waits until nothing is drawn for `quiet` milliseconds; `when` is then the time of the last drawing, if
  // any.
  void lastDrawing(Clock::time_point& when, int quiet) {
    XRectangle area;
    while (next(area, when, quiet)) {
    }
  }

  // Whether the area shows more than a background.
  bool isDrawn(const XRectangle& area) {
    auto* const image = XGetImage(display_, DefaultRootWindow(display_), area.x, area.y, area.width,
                                  area.height, AllPlanes, ZPixmap);
    if (image == nullptr) return false;
    const auto first = XGetPixel(image, 0, 0);
    int others = 0;
    for (int y = 0; y < image->height; ++y) {
      for (int x = 0; x < image->width; ++x) others += XGetPixel(image, x, y) != first ? 1 : 0;
    }
    XDestroyImage(image);
    return others > kSmallest;
  }

  void moveTo(int x, int y) {
    XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
    XSync(display_, False);
  }
  void click() {
    XTestFakeButtonEvent(display_, 1, True, CurrentTime);
    XTestFakeButtonEvent(display_, 1, False, CurrentTime);
    XFlush(display_);
  }

 private:
  Display* display_;
  int firstEvent_ = 0;
};

void print(Clock::duration duration) {
  std::printf("%ld\n",
              static_cast<long>(std::chrono::duration_cast<std::chrono::microseconds>(duration).count()));
}

// The kilobytes of memory that the process has written.
long privateMemoryOf(pid_t process) {
  std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
  long kilobytes = 0;
  for (std::string word; rollup >> word;) {
    if (word == "Private_Dirty:") rollup >> kilobytes;
  }
  return kilobytes;
}

// A running command; the destructor kills it.
class Program {
 public:
  explicit Program(char** command) {
    if (posix_spawnp(&process_, command[0], nullptr, nullptr, command, environ) != 0)
      fail("the command cannot be started");
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }

  [[nodiscard]] long privateMemory() const { return privateMemoryOf(process_); }

 private:
  pid_t process_ = 0;
};

// A print backend, which the bus starts when it is called.
class Backend {
 public:
  explicit Backend(const char* name)
      : name_(name), bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
    if (bus_ == nullptr) fail("there is no session bus");
  }

  // Requests a dialog.
  void requestDialog() {
    request_ = std::string(kPath) + "/request/bench/" + std::to_string(++requests_);
    g_dbus_connection_call(
        bus_, name_, kPath, kPrint, "PreparePrint",
        g_variant_new_parsed("(%o, '', '', 'Print', {'printer': <'Morva'>}, @a{sv} {}, @a{sv} {})",
                             request_.c_str()),
        nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, nullptr, nullptr);
  }
  // Cancels the request.
  void close() { call(name_, request_.c_str(), "org.freedesktop.impl.portal.Request", "Close", nullptr); }
  // Its process; starts it if it does not run.
  pid_t process() {
    call(name_, kPath, "org.freedesktop.DBus.Peer", "Ping", nullptr);
    auto* const answer = callBus("GetConnectionUnixProcessID");
    guint32 process = 0;
    g_variant_get(answer, "(u)", &process);
    g_variant_unref(answer);
    return static_cast<pid_t>(process);
  }
  // Ends its process.
  void end() {
    kill(process(), SIGKILL);
    gboolean hasOwner = TRUE;
    while (hasOwner != FALSE) {
      auto* const answer = callBus("NameHasOwner");
      g_variant_get(answer, "(b)", &hasOwner);
      g_variant_unref(answer);
    }
  }

 private:
  static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
  static constexpr const char* kPrint = "org.freedesktop.impl.portal.Print";

  GVariant* answerOf(const char* name, const char* path, const char* interface, const char* method,
                     GVariant* values) {
    auto* const answer = g_dbus_connection_call_sync(bus_, name, path, interface, method, values, nullptr,
                                                     G_DBUS_CALL_FLAGS_NONE, kTimeout, nullptr, nullptr);
    if (answer == nullptr) fail("the print backend does not answer");
    return answer;
  }
  void call(const char* name, const char* path, const char* interface, const char* method, GVariant* values) {
    g_variant_unref(answerOf(name, path, interface, method, values));
  }
  GVariant* callBus(const char* method) {
    constexpr const char* kBus = "org.freedesktop.DBus";
    return answerOf(kBus, "/org/freedesktop/DBus", kBus, method, g_variant_new("(s)", name_));
  }

  const char* name_;
  GDBusConnection* bus_;
  int requests_ = 0;
  std::string request_;
};

void waitForLargeDrawing(Screen& screen, XRectangle& area, Clock::time_point& when) {
  do {
    if (!screen.next(area, when, kTimeout)) fail("nothing was drawn");
  } while (area.width < kSmallest || area.height < kSmallest);
}

void waitForWindow(Screen& screen, Clock::time_point& when) {
  XRectangle area;
  do {
    waitForLargeDrawing(screen, area, when);
  } while (!screen.isDrawn(area));
}

void measureFrame(char** words) {
  Screen screen;
  Clock::time_point when;
  const auto start = Clock::now();
  const Program program(words);
  waitForWindow(screen, when);
  print(when - start);
}

void measureSettle(char** words) {
  Screen screen;
  Clock::time_point when;
  const auto start = Clock::now();
  const Program program(words);
  waitForWindow(screen, when);
  screen.lastDrawing(when, kSettled);
  print(when - start);
  std::printf("%ld\n", program.privateMemory());
}

void measureClick(char** words) {
  Screen screen;
  Clock::time_point when;
  const Program program(words + 2);
  waitForWindow(screen, when);
  screen.lastDrawing(when, kSettled);
  screen.moveTo(std::atoi(words[0]), std::atoi(words[1]));
  screen.lastDrawing(when, kQuiet);
  const auto start = Clock::now();
  screen.click();
  XRectangle area;
  waitForLargeDrawing(screen, area, when);
  print(when - start);
  screen.lastDrawing(when, kQuiet);
  print(when - start);
}

void measureChanges(char** words) {
  Screen screen;
  Clock::time_point when;
  const Program program(words + 3);
  waitForWindow(screen, when);
  screen.lastDrawing(when, kSettled);
  const auto change = [&](int count) {
    for (int i = 0; i < count; ++i) {
      screen.moveTo(std::atoi(words[0]), std::atoi(words[1 + i % 2]));
      screen.click();
      XRectangle area;
      waitForLargeDrawing(screen, area, when);
      screen.lastDrawing(when, kChanged);
    }
  };
  change(kFirstChanges);
  const auto before = program.privateMemory();
  change(kChanges);
  std::printf("%ld\n", program.privateMemory() - before);
}

void measureStarted(char** words) {
  Screen screen;
  Clock::time_point when;
  Backend backend(words[0]);
  const auto start = Clock::now();
  backend.requestDialog();
  waitForWindow(screen, when);
  print(when - start);
  screen.lastDrawing(when, kSettled);
  backend.end();
  screen.lastDrawing(when, kQuiet);
}

void showDialog(Screen& screen, Backend& backend, Clock::time_point& when) {
  backend.requestDialog();
  waitForWindow(screen, when);
}

void closeDialog(Screen& screen, Backend& backend) {
  Clock::time_point when;
  backend.close();
  screen.lastDrawing(when, kChanged);
}

void measureAsked(char** words) {
  Screen screen;
  Clock::time_point when;
  Backend backend(words[0]);
  showDialog(screen, backend, when);
  screen.lastDrawing(when, kSettled);
  closeDialog(screen, backend);
  const auto start = Clock::now();
  showDialog(screen, backend, when);
  print(when - start);
  screen.lastDrawing(when, kSettled);
  closeDialog(screen, backend);
}

void measureIdle(char** words) {
  Backend backend(words[0]);
  const auto process = backend.process();
  poll(nullptr, 0, kSettled);
  std::printf("%ld\n", privateMemoryOf(process));
  backend.end();
}

void measureDialogs(char** words) {
  Screen screen;
  Clock::time_point when;
  Backend backend(words[0]);
  const auto show = [&](int count) {
    for (int i = 0; i < count; ++i) {
      showDialog(screen, backend, when);
      screen.lastDrawing(when, kChanged);
      closeDialog(screen, backend);
    }
    return privateMemoryOf(backend.process());
  };
  const auto before = show(kFirstDialogs);
  std::printf("%ld\n", show(kDialogs) - before);
  backend.end();
}

// A mode, its number of arguments before the command, and its function.
struct Mode {
  std::string_view name;
  int words;
  void (*measure)(char** words);
};
constexpr std::array<Mode, 8> kModes{{{"frame", 0, measureFrame},
                                      {"settle", 0, measureSettle},
                                      {"click", 2, measureClick},
                                      {"changes", 3, measureChanges},
                                      {"started", 0, measureStarted},
                                      {"asked", 0, measureAsked},
                                      {"idle", 0, measureIdle},
                                      {"dialogs", 0, measureDialogs}}};

}  // namespace

int main(int argc, char* argv[]) {
  for (const auto& [name, words, measure] : kModes) {
    if (argc > 2 + words && name == argv[1]) {
      measure(argv + 2);
      return 0;
    }
  }
  fail(
      "frame COMMAND... | settle COMMAND... | click X Y COMMAND... | changes X Y1 Y2 COMMAND... | "
      "started NAME... | asked NAME... | idle NAME... | dialogs NAME...");
}
