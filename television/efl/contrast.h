#pragma once
/* High contrast, as the setting says. */

namespace vesk::efl {

/* Shows the theme's colours for high contrast whenever the setting says so, as long as it lives. */
class Contrast {
public:
    Contrast();
    ~Contrast();
    Contrast(const Contrast &) = delete;
    Contrast &operator=(const Contrast &) = delete;
};

} // namespace vesk::efl
