#pragma once
/* How large the panel's window is on a display. */

namespace vesk {

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size &) const = default;
};

/* `wanted`, or as much smaller in its own proportions as `screen` takes; a screen of unknown size, 0, takes all. */
Size size_on_screen(Size wanted, Size screen);

} // namespace vesk
