#pragma once
/* What the module asks of the toolkit and of the platform beside what it logs, as one sequence; for a program of one
 * source: these functions stand before the others' own. While a Noting lives, each of their calls becomes a line of
 * the test's log. */

#include <Elementary.h>
#include <dlfcn.h>
#include <dlog.h>
#include <string>
#include <system_info.h>
#include <vector>

#include "desktop/log.h"
#include "screen_test.h"
#include "ug/app_keys.h"

/* In the place of a priority: a call that was noted. */
constexpr int kNoted = 0;

class Noting {
public:
    Noting() { noting = true; }
    ~Noting() { noting = false; }
    Noting(const Noting &) = delete;
    Noting &operator=(const Noting &) = delete;

    static void note(const std::string &call)
    {
        if (noting)
            vesk_port::log_line(kNoted, "VESK_LOG", "toolkit: noted(0) > " + call);
    }

private:
    static inline bool noting;
};

/* The log with its calls, such as "I refresh_genlist: Enter" and "ug_destroy_me". */
inline std::vector<std::string> sequence(const std::vector<LogLine> &log)
{
    std::vector<std::string> result;
    for (const LogLine &line : log) {
        if (line.priority == kNoted)
            result.push_back(line.message);
        else
            result.push_back(std::string(1, " IWE"[line.priority - DLOG_INFO + 1]) + " " + line.function + ": " +
                             line.message);
    }
    return result;
}

/* What an object is to the screen. */
inline std::string role(const Evas_Object *object)
{
    if (!object)
        return "nothing";
    if (!app_data)
        return "object";
    return object == app_data->base           ? "base"
           : object == app_data->win          ? "window"
           : object == app_data->genlist      ? "list"
           : object == app_data->edit_button  ? "edit button"
           : object == app_data->close_button ? "close button"
                                              : "object";
}

template <class Function> Function behind_note(Function, const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

extern "C" {

void elm_config_focus_highlight_enabled_set(Eina_Bool enabled)
{
    static const auto next =
        behind_note(&elm_config_focus_highlight_enabled_set, "elm_config_focus_highlight_enabled_set");
    Noting::note("focus highlight " + std::to_string(enabled));
    next(enabled);
}

void elm_win_focus_highlight_enabled_set(Evas_Object *object, Eina_Bool enabled)
{
    static const auto next = behind_note(&elm_win_focus_highlight_enabled_set, "elm_win_focus_highlight_enabled_set");
    Noting::note("focus highlight " + std::to_string(enabled) + " on " + role(object));
    next(object, enabled);
}

void elm_object_signal_emit(Evas_Object *object, const char *signal, const char *source)
{
    static const auto next = behind_note(&elm_object_signal_emit, "elm_object_signal_emit");
    Noting::note(std::string(signal) + " from " + source + " to " + role(object));
    next(object, signal, source);
}

void elm_popup_align_set(Evas_Object *popup, double horizontal, double vertical)
{
    static const auto next = behind_note(&elm_popup_align_set, "elm_popup_align_set");
    Noting::note("popup aligned");
    next(popup, horizontal, vertical);
}

void elm_app_base_scale_set(double scale)
{
    static const auto next = behind_note(&elm_app_base_scale_set, "elm_app_base_scale_set");
    Noting::note("base scale " + std::to_string(scale));
    next(scale);
}

void evas_object_event_callback_add(Evas_Object *object, Evas_Callback_Type type, Evas_Object_Event_Cb callback,
                                    const void *data)
{
    static const auto next = behind_note(&evas_object_event_callback_add, "evas_object_event_callback_add");
    if (type == EVAS_CALLBACK_KEY_DOWN && callback == Close_app_On_returnKey)
        Noting::note("keys of the screen");
    next(object, type, callback, data);
}

int system_info_get_custom_bool(const char *key, bool *value)
{
    static const auto next = behind_note(&system_info_get_custom_bool, "system_info_get_custom_bool");
    Noting::note(std::string("system_info_get_custom_bool ") + key);
    return next(key, value);
}

int ea_init(int first, int second)
{
    static const auto next = behind_note(&ea_init, "ea_init");
    Noting::note("ea_init " + std::to_string(first) + " " + std::to_string(second));
    return next(first, second);
}

void *ug_get_window(void)
{
    static const auto next = behind_note(&ug_get_window, "ug_get_window");
    Noting::note("ug_get_window");
    return next();
}

int ug_destroy_me(ui_gadget_h gadget)
{
    static const auto next = behind_note(&ug_destroy_me, "ug_destroy_me");
    Noting::note("ug_destroy_me");
    return next(gadget);
}

} // extern "C"
