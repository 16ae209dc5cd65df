// Watches an X screen from outside, as a user does, and prints microseconds:
//   screen frame COMMAND...   from the command's start until its window is first drawn; then ends it
//   screen settle COMMAND...  the same until the last drawing before a second of quiet, and then the
//                             kilobytes of memory that the command has written
//   screen click X Y          from a click there until a large part of the screen is drawn
#include <algorithm>
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

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kPatience = 20'000;  // milliseconds
constexpr int kQuiet = 300;
constexpr int kSettled = 1'000;
constexpr int kSmallest = 200;  // pixels of a window that counts

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

// Kilobytes that are the process's own.
long privateMemory(pid_t process) {
  std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
  long kilobytes = 0;
  for (std::string word; rollup >> word;) {
    if (word == "Private_Dirty:") rollup >> kilobytes;
  }
  return kilobytes;
}

void measureStart(char* command[], bool settles) {
  Screen screen;
  const auto start = Clock::now();
  pid_t process = 0;
  if (posix_spawnp(&process, command[0], nullptr, nullptr, command, environ) != 0)
    fail("the command cannot be started");
  XRectangle area;
  Clock::time_point when;
  do {
    if (!screen.next(area, when, kPatience)) fail("nothing was drawn");
  } while (area.width < kSmallest || area.height < kSmallest || !screen.isDrawn(area));
  if (settles) {
    screen.lastDrawing(when, kSettled);
    print(when - start);
    std::printf("%ld\n", privateMemory(process));
  } else {
    print(when - start);
  }
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

void measureClick(int x, int y) {
  Screen screen;
  screen.moveTo(x, y);
  Clock::time_point when;
  screen.lastDrawing(when, kQuiet);
  const auto start = Clock::now();
  screen.click();
  XRectangle area;
  do {
    if (!screen.next(area, when, kPatience)) fail("nothing was drawn");
  } while (area.width < kSmallest || area.height < kSmallest);
  print(when - start);
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string_view what = argc > 1 ? argv[1] : "";
  if ((what == "frame" || what == "settle") && argc > 2)
    measureStart(argv + 2, what == "settle");
  else if (what == "click" && argc == 4)
    measureClick(std::atoi(argv[2]), std::atoi(argv[3]));
  else
    fail("frame COMMAND... | settle COMMAND... | click X Y");
}
