#include "host_display_fixture.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kScreenWidth = 1600;
constexpr int kScreenHeight = 1200;
constexpr double kScale = kScreenWidth / 1920.0; /* the panel is as wide as the screen */
constexpr double kTop = (kScreenHeight - kScale * 1080.0) / 2.0;
constexpr unsigned long kLight = 0xe0; /* of each colour */

bool is_light_pixel(unsigned long pixel)
{
    return std::min({pixel & 0xff, pixel >> 8 & 0xff, pixel >> 16 & 0xff}) >= kLight;
}

} // namespace

HostDisplay::HostDisplay() = default;

HostDisplay::~HostDisplay()
{
    unsetenv("DISPLAY");
    if (display_)
        XCloseDisplay(display_);
    if (server_ > 0) {
        kill(server_, SIGTERM);
        waitpid(server_, nullptr, 0);
    }
}

/* The server takes the first free number and tells it on a descriptor. */
void HostDisplay::SetUp()
{
    int number[2];
    ASSERT_EQ(pipe(number), 0);
    server_ = fork();
    ASSERT_GE(server_, 0);
    if (server_ == 0) {
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDERR_FILENO);
        const std::string descriptor = std::to_string(number[1]);
        const std::string size = std::to_string(kScreenWidth) + "x" + std::to_string(kScreenHeight) + "x24";
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", size.c_str(), "-noreset", "-nolisten",
               "tcp", nullptr);
        _exit(127);
    }
    close(number[1]);
    /* The number and its line end come in two writes. */
    std::string name = ":";
    char letter = 0;
    while (read(number[0], &letter, 1) == 1 && letter != '\n')
        name += letter;
    close(number[0]);
    ASSERT_EQ(letter, '\n') << "Xvfb does not start";
    setenv("DISPLAY", name.c_str(), 1);
    display_ = XOpenDisplay(name.c_str());
    ASSERT_NE(display_, nullptr);
}

void HostDisplay::manage_windows()
{
    XSelectInput(display_, DefaultRootWindow(display_), SubstructureRedirectMask);
    XSync(display_, False);
}

std::pair<int, int> HostDisplay::size_of_managed_window()
{
    std::pair<int, int> size;
    bool asks = false;
    const auto asked = [&] {
        XEvent event;
        while (XPending(display_) > 0) {
            XNextEvent(display_, &event);
            if (event.type == ConfigureRequest)
                size = {event.xconfigurerequest.width, event.xconfigurerequest.height};
            asks = asks || event.type == MapRequest;
        }
        return asks;
    };
    return wait_until(asked) ? size : std::make_pair(0, 0);
}

testing::AssertionResult HostDisplay::light_at(int x, int y)
{
    return is_light(x, y, true);
}

testing::AssertionResult HostDisplay::dark_at(int x, int y)
{
    return is_light(x, y, false);
}

testing::AssertionResult HostDisplay::is_light(int x, int y, bool wanted)
{
    unsigned long pixel = 0;
    const auto as_wanted = [&] {
        XImage *image = XGetImage(display_, DefaultRootWindow(display_), static_cast<int>(x * kScale),
                                  static_cast<int>(kTop + y * kScale), 1, 1, AllPlanes, ZPixmap);
        pixel = XGetPixel(image, 0, 0);
        XDestroyImage(image);
        return is_light_pixel(pixel) == wanted;
    };
    if (wait_until(as_wanted))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the screen shows " << std::hex << pixel << std::dec << " at " << x << ","
                                       << y << " of the panel";
}

void HostDisplay::type(const std::string &key)
{
    const KeyCode code = XKeysymToKeycode(display_, XStringToKeysym(key.c_str()));
    ASSERT_NE(code, 0) << key;
    XTestFakeKeyEvent(display_, code, True, CurrentTime);
    XTestFakeKeyEvent(display_, code, False, CurrentTime);
    XFlush(display_);
}
