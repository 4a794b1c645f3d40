#include "spy.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <utility>

namespace spy {

namespace {

/* Never deleted: the toolkit ends after the program's own objects, and calls on its way. */
std::vector<Call> &calls = *new std::vector<Call>;

} // namespace

const std::vector<Call> &journal()
{
    return calls;
}

void forget()
{
    calls.clear();
}

void note(Call call)
{
    calls.push_back(std::move(call));
}

void note_line(const std::string &line)
{
    calls.push_back({.function = "", .on = nullptr, .text = line});
}

std::vector<Call> calls_of(std::string_view function)
{
    std::vector<Call> found;
    std::ranges::copy_if(calls, std::back_inserter(found), [&](const Call &call) { return call.function == function; });
    return found;
}

std::vector<Call> calls_of(std::string_view function, const void *on)
{
    std::vector<Call> found = calls_of(function);
    std::erase_if(found, [on](const Call &call) { return call.on != on; });
    return found;
}

std::vector<std::string> steps(std::initializer_list<std::string_view> functions)
{
    std::vector<std::string> texts;
    for (const Call &call : calls) {
        if (call.function.empty() || std::ranges::find(functions, call.function) != functions.end())
            texts.push_back(call.text);
    }
    return texts;
}

std::vector<std::string> screen_steps()
{
    return steps({"ea_init", "elm_app_base_scale_set", "elm_config_focus_highlight_enabled_set",
                  "elm_object_signal_emit", "elm_popup_align_set", "elm_win_focus_highlight_enabled_set",
                  "system_info_get_custom_bool", "ug_destroy_me", "ug_get_window"});
}

std::vector<std::string> signals_to(const void *object)
{
    std::vector<std::string> texts;
    for (const Call &call : calls) {
        if (call.on != object || !call.function.ends_with("_signal_emit"))
            continue;
        const size_t source = call.text.find(" from ");
        const size_t role = call.text.rfind(" to ");
        texts.push_back(call.text.substr(0, source) + "|" + call.text.substr(source + 6, role - source - 6));
    }
    return texts;
}

std::vector<std::string> layouts_of(const Elm_Object_Item *item)
{
    std::vector<std::string> texts = signals_to(item);
    std::erase_if(texts, [](const std::string &text) { return !text.starts_with("theme,"); });
    return texts;
}

std::ostream &operator<<(std::ostream &out, const Link &link)
{
    return out << link.from << " in direction " << link.direction << " to " << link.to;
}

std::vector<Link> links()
{
    std::vector<Link> found;
    for (const Call &call : calls_of("elm_object_focus_next_object_set"))
        found.push_back({static_cast<const Evas_Object *>(call.on),
                         static_cast<Elm_Focus_Direction>(call.numbers.at(0)),
                         static_cast<const Evas_Object *>(call.other)});
    return found;
}

std::vector<Link> main_chain(const Evas_Object *list, const Evas_Object *first, const Evas_Object *second, bool reverse)
{
    const Elm_Focus_Direction to_list = reverse ? ELM_FOCUS_RIGHT : ELM_FOCUS_LEFT;
    const Elm_Focus_Direction to_buttons = reverse ? ELM_FOCUS_LEFT : ELM_FOCUS_RIGHT;
    return {{first, ELM_FOCUS_NEXT, list},   {first, to_list, list},     {second, ELM_FOCUS_NEXT, list},
            {second, to_list, list},         {list, to_buttons, first},  {list, ELM_FOCUS_DOWN, list},
            {first, ELM_FOCUS_DOWN, second}, {list, ELM_FOCUS_UP, list}, {second, ELM_FOCUS_UP, first}};
}

std::vector<Timer> timers()
{
    std::vector<Timer> found;
    for (const Call &call : calls_of("ecore_timer_add"))
        found.push_back({call.numbers.at(0), reinterpret_cast<Ecore_Task_Cb>(const_cast<void *>(call.other)), call.on});
    return found;
}

Overrides &overrides()
{
    static auto &in_force = *new Overrides;
    return in_force;
}

void reset()
{
    forget();
    overrides() = {};
}

} // namespace spy
