/* Which widgets there are on the panel, and what keys may do with them. */

#include "television/efl/widgets.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "television/efl/mending.h"

namespace vesk::efl {

namespace {

constexpr std::array<std::string_view, 6> kPlain{"image", "line", "polygon", "rectangle", "text", "textblock"};

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

bool is_plain(const Evas_Object *object)
{
    return std::ranges::find(kPlain, std::string_view(evas_object_type_get(object))) != kPlain.end();
}

bool within(const Evas_Object *object, const Evas_Object *ancestor)
{
    for (; object; object = elm_object_parent_widget_get(object)) {
        if (object == ancestor)
            return true;
    }
    return false;
}

bool row_may_focus(const Elm_Object_Item *row)
{
    return !elm_object_item_disabled_get(row);
}

Evas_Object *Widgets::scope() const
{
    const auto top = std::find_if(popups_.rbegin(), popups_.rend(), evas_object_visible_get);
    return top != popups_.rend() ? *top : window_;
}

std::vector<Evas_Object *> Widgets::shown_popups() const
{
    std::vector<Evas_Object *> found;
    std::ranges::copy_if(popups_, std::back_inserter(found), evas_object_visible_get);
    return found;
}

/* A popup may lie in another one: the last that holds the object is its own. */
bool Widgets::lies_below(const Evas_Object *object) const
{
    const auto own = std::find_if(popups_.rbegin(), popups_.rend(), [&](auto *popup) { return within(object, popup); });
    const auto top = std::find_if(popups_.rbegin(), popups_.rend(), evas_object_visible_get);
    return own != popups_.rend() && top < own;
}

bool Widgets::may_focus(const Evas_Object *object) const
{
    if (std::ranges::find(key_takers_, object) == key_takers_.end())
        return false;
    return elm_object_focus_allow_get(object) && !elm_object_disabled_get(object) && is_shown(object) &&
           within(object, scope());
}

std::vector<Evas_Object *> Widgets::lists() const
{
    std::vector<Evas_Object *> found;
    std::ranges::copy_if(key_takers_, std::back_inserter(found), is_list);
    return found;
}

std::vector<Evas_Object *> Widgets::focusable() const
{
    std::vector<Evas_Object *> found;
    std::ranges::copy_if(key_takers_, std::back_inserter(found), [this](auto *widget) { return may_focus(widget); });
    return found;
}

void Widgets::add_popup(Evas_Object *popup)
{
    popups_.push_back(popup);
    const auto forget = [](void *, Evas *, Evas_Object *gone, void *) {
        if (auto *mending = Mending::current())
            std::erase(mending->widgets.popups_, gone);
    };
    evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, forget, nullptr);
}

void Widgets::forget_key_taker(const Evas_Object *list_or_button)
{
    std::erase(key_takers_, list_or_button);
}

void Widgets::add_key_taker(Evas_Object *list_or_button)
{
    key_takers_.push_back(list_or_button);
    const auto forget = [](void *, Evas *, Evas_Object *gone, void *) {
        if (auto *mending = Mending::current())
            mending->key_taker_gone(gone);
    };
    evas_object_event_callback_add(list_or_button, EVAS_CALLBACK_DEL, forget, nullptr);
}

/* A notify that waits for its timeout outlives the screen that it was shown on. To see it: delete all devices. */
void Widgets::clear_window() const
{
    std::vector<Evas_Object *> left;
    for (auto *object = evas_object_bottom_get(evas_object_evas_get(window_)); object;
         object = evas_object_above_get(object)) {
        if (object != window_ && elm_object_widget_check(object))
            left.push_back(object);
    }
    for (auto *object : left)
        evas_object_del(object);
}

} // namespace vesk::efl
