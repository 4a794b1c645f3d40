/* Which widgets there are on the panel, and what keys may do with them. */

#include "television/efl/widgets.h"

#include <algorithm>
#include <cstring>

#include "television/efl/focus.h"
#include "television/efl/mending.h"

namespace vesk::efl {

namespace {

/* Both in the order of their making; what is gone has left. */
std::vector<Evas_Object *> popups;
std::vector<Evas_Object *> key_takers;

void remember(std::vector<Evas_Object *> &widgets, Evas_Object *widget)
{
    widgets.push_back(widget);
    const auto forget = [](void *from, Evas *, Evas_Object *gone, void *) {
        std::erase(*static_cast<std::vector<Evas_Object *> *>(from), gone);
    };
    evas_object_event_callback_add(widget, EVAS_CALLBACK_DEL, forget, &widgets);
}

/* Shown itself, and within nothing that is hidden. */
bool is_shown(const Evas_Object *object)
{
    for (; object; object = evas_object_smart_parent_get(object)) {
        if (!evas_object_visible_get(object))
            return false;
    }
    return true;
}

} // namespace

bool is_list(const Evas_Object *object)
{
    const char *type = object ? evas_object_type_get(object) : nullptr;
    return type && std::strcmp(type, "elm_genlist") == 0;
}

bool within(const Evas_Object *object, const Evas_Object *ancestor)
{
    for (; object; object = elm_object_parent_widget_get(object)) {
        if (object == ancestor)
            return true;
    }
    return false;
}

Evas_Object *scope()
{
    const auto top = std::find_if(popups.rbegin(), popups.rend(), evas_object_visible_get);
    return top != popups.rend() ? *top : window();
}

std::vector<Evas_Object *> shown_popups()
{
    std::vector<Evas_Object *> found;
    std::ranges::copy_if(popups, std::back_inserter(found), evas_object_visible_get);
    return found;
}

bool may_focus(const Evas_Object *object)
{
    if (std::ranges::find(key_takers, object) == key_takers.end())
        return false;
    return elm_object_focus_allow_get(object) && !elm_object_disabled_get(object) && is_shown(object) &&
           within(object, scope());
}

std::vector<Evas_Object *> lists()
{
    std::vector<Evas_Object *> found;
    std::ranges::copy_if(key_takers, std::back_inserter(found), is_list);
    return found;
}

std::vector<Evas_Object *> focusable_widgets()
{
    std::vector<Evas_Object *> found;
    std::ranges::copy_if(key_takers, std::back_inserter(found), [](auto *widget) { return may_focus(widget); });
    return found;
}

bool row_may_focus(const Elm_Object_Item *row)
{
    return !elm_object_item_disabled_get(row);
}

void popup_added(Evas_Object *popup)
{
    remember(popups, popup);
    const auto gone = [](void *, Evas *, Evas_Object *, void *) { popup_gone(); };
    evas_object_event_callback_add(popup, EVAS_CALLBACK_FREE, gone, nullptr);
}

void key_taker_added(Evas_Object *widget)
{
    remember(key_takers, widget);
    if (is_list(widget))
        evas_object_smart_callback_add(
            widget, "realized", [](void *, Evas_Object *list, void *) { row_realized(list); }, nullptr);
}

/* A check box in a row takes the row's Return key when it can be focused: the row is not selected then, and Down may
   not leave it. To see it: enter edit mode and press Return on a row. */
void check_added(Evas_Object *check, const Evas_Object *parent)
{
    if (is_list(parent))
        elm_object_focus_allow_set(check, EINA_FALSE);
    else
        key_taker_added(check);
}

/* A notify that waits for its timeout outlives the screen that it was shown on. To see it: delete all devices. */
void clear_window()
{
    std::vector<Evas_Object *> left;
    for (auto *object = evas_object_bottom_get(evas_object_evas_get(window())); object;
         object = evas_object_above_get(object)) {
        if (object != window() && elm_object_widget_check(object))
            left.push_back(object);
    }
    for (auto *object : left)
        evas_object_del(object);
}

} // namespace vesk::efl
