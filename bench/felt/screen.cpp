// Watches an X screen from outside, as a user does, and prints microseconds:
//   screen frame COMMAND...   from the command's start until its window is first drawn; then ends it
//   screen settle COMMAND...  the same until the last drawing before a second of quiet, and then the
//                             kilobytes of memory that the command has written
//   screen click X Y COMMAND...  from a click there, once all is drawn, until a large part is drawn again
//   screen changes X Y1 Y2 COMMAND...  the kilobytes of memory that the command writes while a hundred clicks
//                             go there, now at one height and now at the other
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
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kPatience = 20'000;  // milliseconds
constexpr int kQuiet = 300;
constexpr int kSettled = 1'000;
constexpr int kSmallest = 200;  // pixels of a window that counts
constexpr int kChanged = 120;
constexpr int kFirstChanges = 20;  // after which the toolkit's caches are full
constexpr int kChanges = 100;

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
      fail("the screen does not tell what is drawn");
    XDamageCreate(display_, DefaultRootWindow(display_), XDamageReportRawRectangles);
    XSync(display_, False);
  }

  // What is drawn next, and when it was heard of; none after so many milliseconds without.
  bool next(XRectangle& area, Clock::time_point& when, int patience) {
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
      if (poll(&connection, 1, patience) <= 0) return false;
    }
  }

  // Waits for so many milliseconds without a drawing.
  void lastDrawing(Clock::time_point& when, int quiet) {
    XRectangle area;
    while (next(area, when, quiet)) {
    }
  }

  // Whether more than a background is there.
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

// A command that is ended with this object.
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

  // Kilobytes that are the process's own.
  [[nodiscard]] long privateMemory() const {
    std::ifstream rollup("/proc/" + std::to_string(process_) + "/smaps_rollup");
    long kilobytes = 0;
    for (std::string word; rollup >> word;) {
      if (word == "Private_Dirty:") rollup >> kilobytes;
    }
    return kilobytes;
  }

 private:
  pid_t process_ = 0;
};

void waitForLargeDrawing(Screen& screen, XRectangle& area, Clock::time_point& when) {
  do {
    if (!screen.next(area, when, kPatience)) fail("nothing was drawn");
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

// A mode, the words that it takes before the command, and what it does with all of them.
struct Mode {
  std::string_view name;
  int words;
  void (*measure)(char** words);
};
constexpr std::array<Mode, 4> kModes{{{"frame", 0, measureFrame},
                                      {"settle", 0, measureSettle},
                                      {"click", 2, measureClick},
                                      {"changes", 3, measureChanges}}};

}  // namespace

int main(int argc, char* argv[]) {
  for (const auto& [name, words, measure] : kModes) {
    if (argc > 2 + words && name == argv[1]) {
      measure(argv + 2);
      return 0;
    }
  }
  fail("frame COMMAND... | settle COMMAND... | click X Y COMMAND... | changes X Y1 Y2 COMMAND...");
}
