#include "television/reader/reader.h"

#include <cstdlib>
#include <libintl.h>

#include "desktop/fence.h"
#include "television/efl/mending.h"

namespace vesk {

namespace {

/* How long the focus has to rest, in seconds: closing a popup moves it several times. */
constexpr double kRest = 0.03;

Reader *present = nullptr;
std::function<void(const std::string &)> listener;

/* The text as it is spoken: without the marks that keep a name's direction in a picture. */
std::string spoken(std::string text)
{
    for (const char *mark : {"&#x200e;", "\u200e", "\u200f"}) {
        for (size_t at = text.find(mark); at != text.npos; at = text.find(mark))
            text.erase(at, std::string(mark).size());
    }
    return text;
}

std::string take(char *text)
{
    std::string copy = text ? text : "";
    free(text);
    return copy;
}

std::string text_or_empty(const char *text)
{
    return text ? text : "";
}

} // namespace

Reader::Reader(Voice voice) : voice_(std::move(voice))
{
    present = this;
}

Reader::~Reader()
{
    if (rest_)
        ecore_timer_del(rest_);
    for (const auto &[object, callback] : callbacks_)
        evas_object_event_callback_del(const_cast<Evas_Object *>(object), EVAS_CALLBACK_DEL, forget_callback);
    present = nullptr;
}

Reader *Reader::current()
{
    return present;
}

void Reader::forget_callback(void *, Evas *, Evas_Object *object, void *)
{
    if (present)
        present->callbacks_.erase(object);
}

void Reader::forget_rows(void *, Evas *, Evas_Object *list, void *)
{
    if (!present)
        return;
    std::erase_if(present->row_objects_, [list](const auto &entry) {
        const bool gone = evas_object_data_get(entry.second, "vesk.list") == list;
        if (gone)
            evas_object_del(entry.second);
        return gone;
    });
}

/* What the module has to say about an object; it may say something at once besides. */
std::string Reader::asked(Evas_Object *object) const
{
    const auto found = callbacks_.find(object);
    return found == callbacks_.end() ? "" : take(found->second.ask(found->second.data, object));
}

std::string Reader::text_of_row(Elm_Object_Item *row) const
{
    const auto object = row_objects_.find(row);
    const auto text = object == row_objects_.end() ? "" : asked(object->second);
    return text.empty() ? text_or_empty(elm_object_item_part_text_get(row, "elm.text")) : text;
}

std::string Reader::text_of_widget(Evas_Object *widget) const
{
    auto text = asked(widget);
    if (!text.empty() || efl::is_list(widget))
        return text;
    return text_or_empty(elm_object_text_get(widget)) + ", " + dgettext("ug-VeskUG-efl", "TV_SID_BUTTON");
}

void Reader::read()
{
    const auto *mending = efl::Mending::current();
    const auto *widget = mending ? elm_object_focused_object_get(mending->widgets.window()) : nullptr;
    if (!widget || widget != resting_.widget || !mending->widgets.may_focus(widget)) {
        resting_ = {}; /* it may come back to the same place */
        return;
    }
    if (resting_ == last_)
        return;
    last_ = resting_;
    const auto text = spoken(last_.row ? text_of_row(last_.row) : text_of_widget(last_.widget));
    if (text.empty() || text == last_said_)
        return; /* the module has said it by itself */
    voice_(text, fresh_);
    fresh_ = false;
}

void Reader::key_came()
{
    fresh_ = true;
    last_said_.clear();
}

void Reader::say(const char *text)
{
    last_said_ = spoken(text);
    voice_(last_said_, true);
    fresh_ = false;
}

void Reader::begin_rest()
{
    if (rest_)
        ecore_timer_del(rest_);
    rest_ = ecore_timer_add(
        kRest,
        [](void *data) -> Eina_Bool {
            auto *self = static_cast<Reader *>(data);
            self->rest_ = nullptr;
            vesk_port::fenced("reading what has the focus", [self] { self->read(); });
            return ECORE_CALLBACK_CANCEL;
        },
        this);
}

void Reader::focus_rests(const efl::Widgets &widgets)
{
    auto *widget = elm_object_focused_object_get(widgets.window());
    if (!widgets.may_focus(widget))
        return;
    const Subject now{widget, efl::is_list(widget) ? elm_object_focused_item_get(widget) : nullptr};
    if (now == resting_)
        return;
    resting_ = now;
    begin_rest();
}

void Reader::set_callback(Evas_Object *object, Elm_Access_Info_Cb callback, const void *data)
{
    const auto [entry, added] = callbacks_.insert_or_assign(object, Callback{callback, const_cast<void *>(data)});
    if (added)
        evas_object_event_callback_add(object, EVAS_CALLBACK_DEL, forget_callback, nullptr);
}

Evas_Object *Reader::object_of_row(Elm_Object_Item *row)
{
    auto *list = elm_object_item_widget_get(row);
    auto &object = row_objects_[row];
    if (object || !list)
        return object;
    object = evas_object_rectangle_add(evas_object_evas_get(list)); /* never shown: a name for the row */
    evas_object_data_set(object, "vesk.list", list);
    evas_object_event_callback_del(list, EVAS_CALLBACK_DEL, forget_rows);
    evas_object_event_callback_add(list, EVAS_CALLBACK_DEL, forget_rows, nullptr);
    return object;
}

void set_speech_listener(std::function<void(const std::string &text)> new_listener)
{
    listener = std::move(new_listener);
}

void say_at_once(const char *text)
{
    if (listener)
        listener(text);
    if (present)
        present->say(text);
}

} // namespace vesk
