/* Which widgets there are on the panel, and what keys may do with them. */

#include "bends.h"

#include <algorithm>
#include <cstring>

namespace vesk::bends {

namespace {

/* In the order of their making; a popup that is gone has left. */
std::vector<Evas_Object *> popups;

bool is_type(const Evas_Object *object, const char *type)
{
    const char *actual = evas_object_type_get(object);
    return actual && std::strcmp(actual, type) == 0;
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

std::vector<Evas_Object *> members_of(const Evas_Object *object)
{
    std::vector<Evas_Object *> members;
    Eina_List *list = evas_object_smart_members_get(object);
    for (const Eina_List *link = list; link; link = eina_list_next(link))
        members.push_back(static_cast<Evas_Object *>(eina_list_data_get(link)));
    eina_list_free(list);
    return members;
}

std::vector<Evas_Object *> objects_on_canvas()
{
    std::vector<Evas_Object *> objects;
    for (auto *object = evas_object_bottom_get(evas_object_evas_get(window())); object;
         object = evas_object_above_get(object))
        objects.push_back(object);
    return objects;
}

void collect_focusable(Evas_Object *object, std::vector<Evas_Object *> &found)
{
    if (may_focus(object)) {
        found.push_back(object);
        return; /* what lies in a list or a button is no place of its own */
    }
    for (auto *member : members_of(object))
        collect_focusable(member, found);
}

} // namespace

bool is_list(const Evas_Object *object)
{
    return object && is_type(object, "elm_genlist");
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

bool may_focus(const Evas_Object *object)
{
    if (!object || !elm_object_widget_check(object))
        return false;
    if (!is_list(object) && !is_type(object, "elm_button") && !is_type(object, "elm_check"))
        return false;
    return elm_object_focus_allow_get(object) && !elm_object_disabled_get(object) && is_shown(object) &&
           within(object, scope());
}

std::vector<Evas_Object *> focusable_widgets()
{
    std::vector<Evas_Object *> found;
    for (auto *object : objects_on_canvas())
        collect_focusable(object, found);
    return found;
}

bool row_may_focus(const Elm_Object_Item *row)
{
    return !elm_object_item_disabled_get(row);
}

void popup_added(Evas_Object *popup)
{
    popups.push_back(popup);
    const auto forget = [](void *, Evas *, Evas_Object *gone, void *) { std::erase(popups, gone); };
    evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, forget, nullptr);
}

/* A check box in a row takes the row's Return key when it can be focused: the row is not selected then, and Down may
   not leave it. To see it: enter edit mode and press Return on a row. */
void check_added(Evas_Object *check, const Evas_Object *parent)
{
    if (is_list(parent))
        elm_object_focus_allow_set(check, EINA_FALSE);
}

/* A notify that waits for its timeout outlives the screen that it was shown on. To see it: delete all devices. */
void clear_window()
{
    for (auto *object : objects_on_canvas()) {
        if (object != window() && elm_object_widget_check(object) && elm_object_parent_widget_get(object) == window())
            evas_object_del(object);
    }
}

} // namespace vesk::bends
