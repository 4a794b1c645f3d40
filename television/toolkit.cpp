#include "television/toolkit.h"

#include <Ecore_Evas.h>
#include <Efreet.h>
#include <Elementary.h>
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <glib.h>
#include <mutex>
#include <stdexcept>
#include <string>
#include <sys/select.h>
#include <utility>

#include "desktop/fence.h"
#include "desktop/log.h"
#include "desktop/paths.h"
#include "television/main_loops.h"

namespace vesk {

namespace {

/* The main loop as the toolkit sees it: the wait between two turns passes through here, with the time until something
   is due. */
struct Loop {
    Ecore_Select_Function wait = nullptr;        /* the toolkit's own */
    Ecore_Timer *ticks = nullptr;                /* while something is animated and no display's refresh drives it */
    const std::function<bool()> *over = nullptr; /* when to end; timers may have brought it about in this very turn */
    double last_tick = 0.0;                      /* in the toolkit's time */
    bool settling = false;
    bool idle = false;
    bool still = false;
    bool log_messages = false; /* the toolkit's, into the log */
    timeval quiet{};           /* how long nothing may happen before the loop counts as idle */
};
Loop loop;
std::filesystem::path theme;

constexpr unsigned int kFingerPixels = 24; /* a touch that moves less is a tap */
constexpr long kSoonUs = 50'000;
constexpr double kFrameSeconds = 1.0 / 60.0;
constexpr double kStillFrameSeconds = 1.0 / 1000.0; /* with animations off nothing needs the time between frames */

bool due_soon(const timeval *timeout)
{
    return timeout && timeout->tv_sec == 0 && timeout->tv_usec <= kSoonUs;
}

int wait_for_both(int count, fd_set *reads, fd_set *writes, fd_set *errors, timeval *timeout)
{
    if (vesk_port::fenced("the end of the wait", false, [] { return loop.over && (*loop.over)(); })) {
        timeval none{};
        return loop.wait(count, reads, writes, errors, &none);
    }
    if (!loop.settling || due_soon(timeout))
        return loop.wait(count, reads, writes, errors, timeout);
    timeval quiet = loop.quiet;
    const int ready = loop.wait(count, reads, writes, errors, &quiet);
    loop.idle = ready == 0;
    return ready;
}

int wait_for_events(int count, fd_set *reads, fd_set *writes, fd_set *errors, timeval *timeout)
{
    return select_with_glib(wait_for_both, count, reads, writes, errors, timeout);
}

/* Does nothing but end the wait. */
Eina_Bool wake(void *)
{
    return ECORE_CALLBACK_RENEW;
}

double frame_seconds()
{
    return loop.still ? kStillFrameSeconds : kFrameSeconds;
}

Eina_Bool tick(void *)
{
    loop.last_tick = ecore_time_get();
    ecore_timer_interval_set(loop.ticks, frame_seconds());
    ecore_animator_custom_tick();
    return ECORE_CALLBACK_RENEW;
}

/* What begins after a rest moves at once: the toolkit's own ticker would let every key wait for a whole frame. */
void begin_ticks(void *)
{
    if (loop.ticks)
        return;
    const double next = loop.last_tick + frame_seconds() - ecore_time_get();
    loop.ticks = ecore_timer_add(std::max(next, 0.0), tick, nullptr);
}

void end_ticks(void *)
{
    ecore_timer_del(loop.ticks);
    loop.ticks = nullptr;
}

/* The toolkit's own messages: into the log file when there is one, and never onto the terminal. */
__attribute__((format(printf, 6, 0))) void log_toolkit_message(const Eina_Log_Domain *domain, Eina_Log_Level level,
                                                               const char *, const char *function, int,
                                                               const char *format, void *, va_list arguments)
{
    if (!loop.log_messages)
        return;
    char text[512];
    vsnprintf(text, sizeof(text), format, arguments);
    static std::mutex one_line_at_a_time; /* the toolkit logs from its threads too */
    vesk_port::fenced("the toolkit's message", [&] {
        const std::lock_guard lock(one_line_at_a_time);
        vesk_port::log_line(level <= EINA_LOG_LEVEL_ERR ? DLOG_ERROR : DLOG_WARN, "EFL",
                            std::string(domain->domain_str) + ": " + function + " > " + text);
    });
}

/* GLib's likewise, such as its complaint about a module that removes a timer which has run out. */
void log_glib_message(const char *domain, GLogLevelFlags level, const char *text, void *)
{
    if (!loop.log_messages)
        return;
    vesk_port::fenced("GLib's message", [&] {
        vesk_port::log_line(level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL) ? DLOG_ERROR : DLOG_WARN, "GLIB",
                            std::string(domain ? domain : "") + ": " + text);
    });
}

/* Xlib writes to the terminal when the display lacks an extension that the toolkit can do without. */
void silence_xlib()
{
    using Handler = int (*)(void *display, const char *extension, const char *reason);
    using Set = Handler (*)(Handler);
    if (const auto set = reinterpret_cast<Set>(dlsym(RTLD_DEFAULT, "XSetExtensionErrorHandler")))
        set([](void *, const char *, const char *) { return 0; });
}

void set_default(const char *name, const std::string &value)
{
    setenv(name, value.c_str(), 0);
}

void prepare_environment()
{
    set_default("ECORE_NO_SYSTEM_MODULES", "1"); /* no attempts to reach a system bus */
    set_default("EINA_LOG_BACKTRACE", "0");
    set_default("ECORE_EVAS_FORCE_SYNC_RENDER", "1"); /* a turning panel races with the render thread otherwise */
    const auto fonts = vesk_port::share_folder() / "theme" / "fonts.conf";
    if (std::filesystem::exists(fonts))
        set_default("FONTCONFIG_FILE", fonts.string());
}

const char *preferred_engine(const ToolkitOptions &options)
{
    if (!options.display)
        return "buffer";
    return getenv("WAYLAND_DISPLAY") ? "wayland_shm" : "software_x11";
}

/* A finger's drag scrolls a list, and what it has begun on is not tapped; the toolkit expects a mouse's wheel. */
void scroll_by_finger()
{
    elm_config_scroll_thumbscroll_enabled_set(EINA_TRUE);
    elm_config_scroll_thumbscroll_threshold_set(kFingerPixels);
}

void stop_motion()
{
    loop.still = true;
    elm_config_transition_duration_factor_set(0.0);
    elm_config_scroll_animation_disabled_set(EINA_TRUE);
    elm_config_scroll_bring_in_scroll_friction_set(0.0);
    elm_config_focus_highlight_animate_set(EINA_FALSE);
}

} // namespace

Ecore_Animator_Source tick_source(Ecore_Animator_Source wanted)
{
    if (wanted != ECORE_ANIMATOR_SOURCE_TIMER)
        return wanted;
    ecore_animator_custom_source_tick_begin_callback_set(begin_ticks, nullptr);
    ecore_animator_custom_source_tick_end_callback_set(end_ticks, nullptr);
    return ECORE_ANIMATOR_SOURCE_CUSTOM;
}

bool loads_at_once()
{
    return loop.still;
}

const std::filesystem::path &theme_file()
{
    return theme;
}

bool display_available()
{
    const char *wayland = getenv("WAYLAND_DISPLAY");
    const char *x11 = getenv("DISPLAY");
    return (wayland && *wayland) || (x11 && *x11);
}

Toolkit::Toolkit(const ToolkitOptions &options) : options_(options)
{
    prepare_environment();
    loop.log_messages = options_.log_messages;
    if (!eina_init() || !ecore_init())
        throw std::runtime_error("The widget toolkit does not start; reinstall the Debian package libelementary1.");
    eina_log_print_cb_set(log_toolkit_message, nullptr);
    g_log_set_default_handler(log_glib_message, nullptr);
    ecore_animator_source_set(ECORE_ANIMATOR_SOURCE_TIMER);
    silence_xlib();
    efreet_cache_disable();
    static char name[] = "vesk-host"; /* the toolkit keeps the pointers and tells a window manager */
    static char *arguments[] = {name, nullptr};
    if (!elm_init(1, arguments))
        throw std::runtime_error("The widget toolkit does not start; reinstall the Debian package libelementary1.");

    elm_policy_set(ELM_POLICY_QUIT, ELM_POLICY_QUIT_NONE);
    elm_config_preferred_engine_set(preferred_engine(options_));
    elm_config_scale_set(kBaseScale * options_.scale);
    scroll_by_finger();
    if (!options_.animations)
        stop_motion();
    theme = options_.theme.empty() ? vesk_port::share_folder() / "theme" / "vesk.edj" : options_.theme;
    elm_theme_overlay_add(nullptr, theme.c_str()); /* an extension would not replace the main list's own look */

    loop.wait = ecore_main_loop_select_func_get();
    ecore_main_loop_select_func_set(wait_for_events);
    if (options_.display)
        loop.quiet.tv_usec = 2 * kSoonUs; /* the display server drives animations and answers late */
}

Toolkit::~Toolkit()
{
    elm_shutdown();
    ecore_shutdown();
    eina_shutdown();
}

bool Toolkit::run_until(const std::function<bool()> &condition, int limit_ms) const
{
    const double limit = ecore_time_get() + limit_ms / 1000.0;
    Ecore_Timer *alarm = ecore_timer_loop_add(limit_ms / 1000.0, wake, nullptr);
    bool held = false;
    run_until([&] { return (held = condition()) || ecore_time_get() >= limit; });
    ecore_timer_del(alarm);
    return held;
}

void Toolkit::run_until(const std::function<bool()> &condition) const
{
    const auto *outer = std::exchange(loop.over, &condition);
    while (!condition())
        ecore_main_loop_iterate_may_block(EINA_TRUE);
    loop.over = outer;
}

bool Toolkit::settle(int limit_ms) const
{
    const double limit = ecore_time_get() + limit_ms / 1000.0;
    /* A module that ends is settled from within the loop that waits for its end. */
    const auto *outer = std::exchange(loop.over, nullptr);
    const bool nested = std::exchange(loop.settling, true);
    loop.idle = false;
    while (!loop.idle && ecore_time_get() < limit)
        ecore_main_loop_iterate_may_block(EINA_TRUE);
    loop.settling = nested;
    loop.over = outer;
    return loop.idle;
}

} // namespace vesk
