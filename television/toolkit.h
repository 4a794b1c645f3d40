#pragma once
/* The widget toolkit of this process: started quietly, with the television's look, and stopped in the end. */

#include <Ecore.h>
#include <filesystem>
#include <functional>

namespace vesk {

/* The toolkit's scale for which the theme's sizes are pixels; the module names the same base for its own. */
constexpr double kBaseScale = 2.0;

struct ToolkitOptions {
    bool display = false;      /* draw on the X11 or Wayland display; otherwise off-screen */
    bool animations = true;    /* false: nothing moves, every change is there with the next frame */
    double scale = 1.0;        /* the user's magnification; 1.0 draws design pixels as pixels */
    bool log_messages = false; /* the toolkit's own messages go to the log, which should be a file; otherwise nowhere */
    std::filesystem::path theme; /* theme file laid over the toolkit's own; empty: share/vesk/theme/vesk.edj */
};

/* One per process, made before every Panel and alive longer than all of them: the toolkit does not start twice. */
class Toolkit {
public:
    /* Throws std::runtime_error with a sentence when the toolkit cannot be started. */
    explicit Toolkit(const ToolkitOptions &options);
    ~Toolkit();
    Toolkit(const Toolkit &) = delete;
    Toolkit &operator=(const Toolkit &) = delete;

    const ToolkitOptions &options() const { return options_; }

    /* Runs the main loop until `condition` holds, which is asked after every turn of the loop, or `limit_ms`
       milliseconds have passed. Returns whether the condition held. */
    bool run_until(const std::function<bool()> &condition, int limit_ms) const;

    /* The same without a limit. */
    void run_until(const std::function<bool()> &condition) const;

    /* Runs the main loop until nothing is being drawn, animated or due within the next 50 ms. Returns false when
       that did not happen within `limit_ms`. Longer timers (the toast's) stay pending. */
    bool settle(int limit_ms = 3000) const;

private:
    ToolkitOptions options_;
};

/* What drives animations when the toolkit would use `wanted`: its thread that ticks by a timer, which the main loop
   does not see coming and which writes to the terminal when the machine is busy, gives way to a timer of the loop. */
Ecore_Animator_Source tick_source(Ecore_Animator_Source wanted);

/* Whether pictures are there with the next frame instead of being loaded beside the main loop: with animations off. */
bool loads_at_once();

/* The theme file that was laid over the toolkit's own. */
const std::filesystem::path &theme_file();

/* Whether the environment names a display to draw on. */
bool display_available();

} // namespace vesk
