/* Something that may have the focus has it, and gets the keys. */

#include "television/efl/focus.h"

#include <algorithm>

#include "television/efl/mending.h"
#include "television/efl/widgets.h"

namespace vesk::efl {

namespace {

constexpr int kTries = 8;

constexpr char kPlainRow[] = "vesk.plain-row";       /* on a list: its focused row that looks unfocused */
constexpr char kPlainChoice[] = "vesk.plain-choice"; /* on a list: its chosen row that looks like any other */
constexpr char kLastRow[] = "vesk.last-row";         /* on a list: the index + 1 of the row that had the focus last */

void remember_row(Evas_Object *list, int index)
{
    evas_object_data_set(list, kLastRow, reinterpret_cast<void *>(static_cast<intptr_t>(index) + 1));
}

/* The index of the row that had the focus last, or 0. */
int remembered_row(const Evas_Object *list)
{
    const auto index = static_cast<int>(reinterpret_cast<intptr_t>(evas_object_data_get(list, kLastRow))) - 1;
    return std::max(index, 0);
}

Elm_Object_Item *row_to_focus(Evas_Object *list)
{
    const auto count = static_cast<int>(elm_genlist_items_count(list));
    for (int distance = 0; distance < count; ++distance) {
        const int index = (std::min(remembered_row(list), count - 1) + distance) % count;
        auto *row = elm_genlist_nth_item_get(list, static_cast<unsigned int>(index));
        if (row_may_focus(row))
            return row;
    }
    return nullptr;
}

/* A row takes the item focus only once it has been realized; asked for right after the append, it is lost, the list
   has the focus, no row has it and the arrows do nothing. To see it: have the list filled anew while it is shown. */
bool row_has_focus(Evas_Object *list)
{
    if (auto *row = elm_object_focused_item_get(list)) {
        remember_row(list, elm_genlist_item_index_get(row) - 1);
        return true;
    }
    auto *row = row_to_focus(list);
    if (row)
        elm_object_item_focus_set(row, EINA_TRUE);
    return !row;
}

/* A list that has lost the focus to a button or to a popup keeps a row that looks focused, so that two things do. To
   see it: press Right on a row. */
void show_row_focus(Evas_Object *list, bool has_focus)
{
    auto *row = elm_object_focused_item_get(list);
    const auto *plain = evas_object_data_get(list, kPlainRow);
    if (!row || has_focus == (row != plain))
        return;
    elm_object_item_signal_emit(row, has_focus ? "elm,state,focused" : "elm,state,unfocused", "elm");
    evas_object_data_set(list, kPlainRow, has_focus ? nullptr : row);
}

/* A row keeps the mark of the chosen one when the focus has moved on to another row, so that two rows look chosen. To
   see it: allow an allowed device, then press Down. */
void show_choice(Evas_Object *list, bool has_focus)
{
    auto *row = elm_object_focused_item_get(list);
    auto *chosen = elm_genlist_selected_item_get(list);
    const auto *plain = evas_object_data_get(list, kPlainChoice);
    if (!chosen || chosen == row) {
        if (plain && chosen == plain)
            elm_object_item_signal_emit(chosen, "elm,state,selected", "elm");
        evas_object_data_del(list, kPlainChoice);
    } else if (has_focus && row && chosen != plain) {
        elm_object_item_signal_emit(chosen, "elm,state,unselected", "elm");
        evas_object_data_set(list, kPlainChoice, chosen);
    }
}

/* One more turn of the main loop, where nothing else may be due: a try that failed is followed by the next. To see it:
   have the list filled anew behind an open drop-down, and the drop-down had no focused choice until the next key. */
void turn_again()
{
    ecore_job_add([](void *) {}, nullptr);
}

} // namespace

void Focus::forget_wish(void *, Evas *, Evas_Object *object, void *)
{
    auto *mending = Mending::current();
    if (mending && mending->focus.wish_ == object)
        mending->focus.wish_ = nullptr;
}

void Focus::set_wish(Evas_Object *object)
{
    if (wish_)
        evas_object_event_callback_del(wish_, EVAS_CALLBACK_DEL, forget_wish);
    wish_ = object;
    if (wish_)
        evas_object_event_callback_add(wish_, EVAS_CALLBACK_DEL, forget_wish, nullptr);
}

void Focus::give(Evas_Object *widget)
{
    moving_ = true;
    elm_object_focus_set(widget, EINA_TRUE);
    moving_ = false;
}

bool Focus::takes_keys(const Evas_Object *widget) const
{
    auto *receiver = evas_focus_get(evas_object_evas_get(widgets_.window()));
    for (; receiver; receiver = evas_object_smart_parent_get(receiver)) {
        if (receiver == widget)
            return true;
    }
    return false;
}

/* Clearing a list deletes the row that held the canvas focus, and the toolkit believes that the list has it still:
   keys then reach nobody. To see it: enter edit mode by a tap while a row has the focus, then press Back. */
void Focus::give_keys(Evas_Object *widget)
{
    elm_object_focus_set(widget, EINA_FALSE);
    give(widget);
    if (!takes_keys(widget))
        evas_object_focus_set(widget, EINA_TRUE);
}

/* With the focus forbidden to everything the keys reach nobody, though the popup is to hear them. To see it: press a
   key while the toast is up. */
void Focus::hear_keys()
{
    if (!takes_keys(widgets_.scope()))
        evas_object_focus_set(widgets_.scope(), EINA_TRUE);
}

Evas_Object *Focus::place_for_focus() const
{
    const auto widgets = widgets_.focusable();
    const auto list = std::ranges::find_if(widgets, [](auto *widget) { return is_list(widget); });
    if (list != widgets.end())
        return *list;
    return widgets.empty() ? nullptr : widgets.front();
}

/* The widget that the module's wish means: a container stands for what lies in it. Null while that is not shown. */
Evas_Object *Focus::wished_widget() const
{
    const auto widgets = widgets_.focusable();
    const auto found = std::ranges::find_if(widgets, [this](auto *widget) { return within(widget, wish_); });
    return found != widgets.end() ? *found : nullptr;
}

/* A popup that is shown gives the focus to its first button, although the module has just asked for another one. To
   see it: a confirmation whose default is its second button. Returns whether the wish has still to be fulfilled. */
bool Focus::pursue_wish(const Evas_Object *focused)
{
    if (!wish_)
        return false;
    auto *widget = wished_widget();
    if (widget && widget == focused)
        set_wish(nullptr);
    else if (widget)
        give(widget);
    else if (tries_ >= kTries / 2 || !elm_object_focus_allow_get(wish_))
        set_wish(nullptr);
    return wish_;
}

/* A wish for the focus below an open popup is turned by that popup into its own first button, so the toolkit never
   hears of it. To see it: open the confirmation while the toast of the deletion before is up; the toast ends, the list
   is to have the focus, and the answer moves from No to Yes. */
bool Focus::asked(Evas_Object *object, bool focus)
{
    if (moving_)
        return true;
    if (focus && widgets_.lies_below(object))
        return false;
    if (focus && within(object, widgets_.window()))
        set_wish(object);
    else if (!focus && wish_ == object)
        set_wish(nullptr);
    tries_ = 0;
    return true;
}

bool Focus::row_asked(Elm_Object_Item *row, bool focus)
{
    auto *list = elm_object_item_widget_get(row);
    if (focus && is_list(list))
        remember_row(list, elm_genlist_item_index_get(row) - 1);
    if (focus && widgets_.lies_below(list))
        return false;
    tries_ = 0;
    return true;
}

bool Focus::keys_asked(const Evas_Object *object) const
{
    return !widgets_.lies_below(object);
}

/* A widget that is forbidden the focus while it has it is not told that it has lost it, and looks focused for good. To
   see it: delete a device, and look at the buttons while the toast is up. */
void Focus::forbidden(Evas_Object *object)
{
    if (!is_list(object))
        elm_object_signal_emit(object, "elm,action,unfocus", "elm");
}

void Focus::bring()
{
    tries_ = 0;
    /* Counted here as well: what is asked for on the way begins the tries anew, and without the keyboard none counts.
     */
    for (int turn = 0; turn < kTries && !keep(); ++turn) {
    }
    tries_ = 0; /* what waits for a frame, a row of a new list, gets its turns of the main loop all the same */
}

void Focus::row_realized(Evas_Object *list)
{
    evas_object_data_del(list, kPlainRow);
    evas_object_data_del(list, kPlainChoice);
    tries_ = 0;
}

void Focus::show() const
{
    const auto *focused = elm_object_focused_object_get(widgets_.window());
    const auto popups = widgets_.shown_popups();
    for (auto *list : widgets_.lists()) {
        show_row_focus(list, list == focused);
        /* In a popup above the screen the chosen row is the present choice, which stays. */
        if (!popups.empty() && within(list, popups.front()))
            show_choice(list, list == focused);
    }
}

/* A popup that goes leaves the focus to some button, unless the module asks for it. To see it: allow a denied device,
   and watch the screen until the list has been read again. */
void Focus::popup_gone()
{
    if (!wish_)
        set_wish(place_for_focus());
    tries_ = 0;
}

bool Focus::keep()
{
    if (!elm_object_focus_get(widgets_.window()) || tries_ >= kTries)
        return false;
    auto *focused = elm_object_focused_object_get(widgets_.window());
    ++tries_;
    if (pursue_wish(focused)) {
        turn_again();
        return false;
    }
    if (!widgets_.may_focus(focused)) {
        turn_again();
        if (auto *place = place_for_focus())
            give(place);
        else
            hear_keys();
        return false;
    }
    if (!takes_keys(focused)) {
        give_keys(focused);
        return false;
    }
    if (is_list(focused) && !row_has_focus(focused))
        return false;
    tries_ = 0;
    return true;
}

} // namespace vesk::efl
