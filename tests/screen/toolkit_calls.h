#pragma once
/* What a screen asks of the toolkit without leaving a trace of its own, for a program of one source: these stand before
 * the toolkit's functions and pass on what they have noted. Calls of the host and of the toolkit itself come by too, so
 * look for the object that is meant. */

#include <Elementary.h>
#include <dlfcn.h>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

/* A signal to an object or a row, as "emission|source". */
struct NotedSignal {
    const void *to;
    std::string text;
};

/* A link of the explicit focus chain. */
struct NotedLink {
    const Evas_Object *from;
    Elm_Focus_Direction direction;
    const Evas_Object *to;
    bool operator==(const NotedLink &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const NotedLink &link)
{
    return out << link.from << " in direction " << link.direction << " to " << link.to;
}

struct NotedTimer {
    double seconds;
    Ecore_Task_Cb callback;
    const void *data;
    bool operator==(const NotedTimer &) const = default;
};

inline std::vector<NotedSignal> noted_signals;
inline std::vector<NotedLink> noted_links;
inline std::vector<NotedTimer> noted_timers;

inline void forget_calls()
{
    noted_signals.clear();
    noted_links.clear();
    noted_timers.clear();
}

inline std::vector<std::string> signals_to(const void *object)
{
    std::vector<std::string> texts;
    for (const NotedSignal &signal : noted_signals) {
        if (signal.to == object)
            texts.push_back(signal.text);
    }
    return texts;
}

/* The signals to a row that choose the layout of its theme. */
inline std::vector<std::string> layouts_of(const Elm_Object_Item *item)
{
    std::vector<std::string> texts = signals_to(item);
    std::erase_if(texts, [](const std::string &text) { return !text.starts_with("theme,"); });
    return texts;
}

extern "C" void elm_object_signal_emit(Evas_Object *object, const char *emission, const char *source)
{
    static const auto next =
        reinterpret_cast<decltype(&elm_object_signal_emit)>(dlsym(RTLD_NEXT, "elm_object_signal_emit"));
    noted_signals.push_back({object, std::string(emission) + "|" + source});
    next(object, emission, source);
}

extern "C" void elm_object_item_signal_emit(Elm_Object_Item *item, const char *emission, const char *source)
{
    static const auto next =
        reinterpret_cast<decltype(&elm_object_item_signal_emit)>(dlsym(RTLD_NEXT, "elm_object_item_signal_emit"));
    noted_signals.push_back({item, std::string(emission) + "|" + source});
    next(item, emission, source);
}

extern "C" void elm_object_focus_next_object_set(Evas_Object *from, Evas_Object *to, Elm_Focus_Direction direction)
{
    static const auto next = reinterpret_cast<decltype(&elm_object_focus_next_object_set)>(
        dlsym(RTLD_NEXT, "elm_object_focus_next_object_set"));
    noted_links.push_back({from, direction, to});
    next(from, to, direction);
}

extern "C" Ecore_Timer *ecore_timer_add(double seconds, Ecore_Task_Cb callback, const void *data)
{
    static const auto next = reinterpret_cast<decltype(&ecore_timer_add)>(dlsym(RTLD_NEXT, "ecore_timer_add"));
    noted_timers.push_back({seconds, callback, data});
    return next(seconds, callback, data);
}

/* The chain of the main screen outside edit mode: buttons one above the other beside the list, on its left when the
 * language is written from right to left. */
inline std::vector<NotedLink> main_chain(const Evas_Object *list, const Evas_Object *first, const Evas_Object *second,
                                         bool reverse)
{
    const Elm_Focus_Direction to_list = reverse ? ELM_FOCUS_RIGHT : ELM_FOCUS_LEFT;
    const Elm_Focus_Direction to_buttons = reverse ? ELM_FOCUS_LEFT : ELM_FOCUS_RIGHT;
    return {{first, ELM_FOCUS_NEXT, list},   {first, to_list, list},     {second, ELM_FOCUS_NEXT, list},
            {second, to_list, list},         {list, to_buttons, first},  {list, ELM_FOCUS_DOWN, list},
            {first, ELM_FOCUS_DOWN, second}, {list, ELM_FOCUS_UP, list}, {second, ELM_FOCUS_UP, first}};
}
