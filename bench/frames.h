#pragma once
/* When the panel has shown what. A frame counts when the window that shows the panel has been drawn with it. */

#include <cstdint>
#include <functional>
#include <optional>

#include "television/panel.h"

namespace bench {

class Frames {
public:
    /* Watches the panel's frames until it is destroyed, which has to be before the panel. */
    explicit Frames(const vesk::Panel &panel);
    ~Frames();
    Frames(const Frames &) = delete;
    Frames &operator=(const Frames &) = delete;

    /* Runs the main loop up to the first frame in which `shown` holds, and returns the time of its end. `shown` is
       asked when the panel has been drawn. Nothing when no such frame comes within `limit_ms`. */
    std::optional<int64_t> frame_with(const std::function<bool()> &shown, int limit_ms);

    /* The same, where a frame that does not come makes the measurement impossible: throws std::runtime_error that names
       `what`. */
    int64_t wait_for(const char *what, const std::function<bool()> &shown);

    /* When the last frame was done. */
    int64_t last() const { return last_; }

private:
    static void panel_drawn(void *self, Evas *canvas, void *event);
    static void window_drawn(void *self, Evas *canvas, void *event);

    const vesk::Panel &panel_;
    Evas *window_canvas_;
    std::function<bool()> shown_;
    bool panel_shows_ = false; /* the panel has been drawn with what is waited for, the window not yet */
    std::optional<int64_t> found_;
    int64_t last_ = 0;
};

} // namespace bench
