#include "television/reader/reader.h"

#include <cstdlib>
#include <libintl.h>
#include <map>

#include "television/efl/widgets.h"

namespace vesk::reader {

namespace {

struct Callback {
    Elm_Access_Info_Cb ask;
    void *data;
};

struct Subject {
    Evas_Object *widget = nullptr;
    Elm_Object_Item *row = nullptr;
    bool operator==(const Subject &) const = default;
};

/* How long the focus has to rest, in seconds: closing a popup moves it several times. */
constexpr double kRest = 0.03;

Voice voice;
std::function<void(const std::string &)> listener;
Ecore_Timer *rest = nullptr;
Subject resting; /* what is read when it still has the focus after kRest */
std::map<const Evas_Object *, Callback> callbacks;
std::map<const Elm_Object_Item *, Evas_Object *> row_objects;
Subject last;          /* what was read last */
std::string last_said; /* by the module, since the last key */
bool fresh = true;     /* nothing has been said since the last key */

/* The text as it is spoken: without the marks that keep a name's direction in a picture. */
std::string spoken(std::string text)
{
    for (const char *mark : {"&#x200e;", "\u200e", "\u200f"}) {
        for (size_t at = text.find(mark); at != text.npos; at = text.find(mark))
            text.erase(at, std::string(mark).size());
    }
    return text;
}

void forget_callback(void *, Evas *, Evas_Object *object, void *)
{
    callbacks.erase(object);
}

void forget_rows(void *, Evas *, Evas_Object *list, void *)
{
    std::erase_if(row_objects, [list](const auto &entry) {
        const bool gone = evas_object_data_get(entry.second, "vesk.list") == list;
        if (gone)
            evas_object_del(entry.second);
        return gone;
    });
}

std::string take(char *text)
{
    std::string copy = text ? text : "";
    free(text);
    return copy;
}

/* What the module has to say about an object; it may say something at once besides. */
std::string asked(Evas_Object *object)
{
    const auto found = callbacks.find(object);
    return found == callbacks.end() ? "" : take(found->second.ask(found->second.data, object));
}

std::string text_or_empty(const char *text)
{
    return text ? text : "";
}

std::string text_of_row(Elm_Object_Item *row)
{
    const auto object = row_objects.find(row);
    const auto text = object == row_objects.end() ? "" : asked(object->second);
    return text.empty() ? text_or_empty(elm_object_item_part_text_get(row, "elm.text")) : text;
}

std::string text_of_widget(Evas_Object *widget)
{
    auto text = asked(widget);
    if (!text.empty() || efl::is_list(widget))
        return text;
    return text_or_empty(elm_object_text_get(widget)) + ", " + dgettext("ug-VeskUG-efl", "TV_SID_BUTTON");
}

void read(const Evas_Object *window)
{
    auto *widget = elm_object_focused_object_get(window);
    if (widget != resting.widget || !efl::may_focus(widget)) {
        resting = {}; /* it may come back to the same place */
        return;
    }
    if (resting == last)
        return;
    last = resting;
    const auto text = spoken(last.row ? text_of_row(last.row) : text_of_widget(widget));
    if (text.empty() || text == last_said)
        return; /* the module has said it by itself */
    voice(text, fresh);
    fresh = false;
}

} // namespace

void begin(Voice with)
{
    voice = std::move(with);
    last = {};
    resting = {};
    key_came();
}

void end()
{
    if (rest)
        ecore_timer_del(rest);
    rest = nullptr;
    voice = nullptr;
}

bool is_on()
{
    return voice != nullptr;
}

void key_came()
{
    fresh = true;
    last_said.clear();
}

void set_listener(std::function<void(const std::string &text)> new_listener)
{
    listener = std::move(new_listener);
}

void say(const char *text)
{
    if (listener)
        listener(text);
    if (!is_on())
        return;
    last_said = spoken(text);
    voice(last_said, true);
    fresh = false;
}

void focus_rests(Evas_Object *window)
{
    auto *widget = elm_object_focused_object_get(window);
    if (!is_on() || !efl::may_focus(widget))
        return;
    const Subject now{widget, efl::is_list(widget) ? elm_object_focused_item_get(widget) : nullptr};
    if (now == resting)
        return;
    resting = now;
    if (rest)
        ecore_timer_del(rest);
    rest = ecore_timer_add(
        kRest,
        [](void *data) -> Eina_Bool {
            rest = nullptr;
            read(static_cast<Evas_Object *>(data));
            return ECORE_CALLBACK_CANCEL;
        },
        window);
}

void set_callback(Evas_Object *object, Elm_Access_Info_Cb callback, const void *data)
{
    const auto [entry, added] = callbacks.insert_or_assign(object, Callback{callback, const_cast<void *>(data)});
    if (added)
        evas_object_event_callback_add(object, EVAS_CALLBACK_DEL, forget_callback, nullptr);
}

Evas_Object *object_of_row(Elm_Object_Item *row)
{
    auto *list = elm_object_item_widget_get(row);
    auto &object = row_objects[row];
    if (object || !list)
        return object;
    object = evas_object_rectangle_add(evas_object_evas_get(list)); /* never shown: a name for the row */
    evas_object_data_set(object, "vesk.list", list);
    evas_object_event_callback_del(list, EVAS_CALLBACK_DEL, forget_rows);
    evas_object_event_callback_add(list, EVAS_CALLBACK_DEL, forget_rows, nullptr);
    return object;
}

} // namespace vesk::reader
