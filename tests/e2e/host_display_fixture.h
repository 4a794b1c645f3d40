#pragma once
/* An X server of the test's own, without a window manager, and what is on its screen. */

#include <string>
#include <sys/types.h>
#include <utility>

#include "host_fixture.h"

struct _XDisplay;

class HostDisplay : public HostTest {
protected:
    HostDisplay();
    ~HostDisplay() override;
    void SetUp() override;

    /* From now on the test is the window manager, one that lets no window be shown. */
    void manage_windows();

    /* Waits until a window asks the window manager to be shown; the size that it has asked for. */
    std::pair<int, int> size_of_managed_window();

    /* Waits until that place of the panel, in its own pixels, is or is not as light as a popup of the television. */
    testing::AssertionResult light_at(int x, int y);
    testing::AssertionResult dark_at(int x, int y);

    /* A key of the keyboard, by its name, to whatever window has the keyboard. */
    void type(const std::string &key);

private:
    testing::AssertionResult is_light(int x, int y, bool wanted);

    _XDisplay *display_ = nullptr;
    pid_t server_ = -1;
};
