/* The arrows. The toolkit follows a widget's explicit focus chain only while no row of a list has the focus, never goes
   round at the ends of a list by plain arrows, may leave an open popup, and loops for ever when nothing on the screen
   can be focused. To see it: press Right on a row, Up on the first row, Left in a confirmation, any arrow while a toast
   has forbidden the focus to everything. */

#include "television/efl/arrows.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

#include "television/efl/focus.h"
#include "television/efl/widgets.h"

namespace vesk::efl {

namespace {

struct Arrow {
    const char *key;
    Elm_Focus_Direction direction;
    int x;
    int y;
};

constexpr std::array<Arrow, 4> kArrows{{
    {"Up", ELM_FOCUS_UP, 0, -1},
    {"Down", ELM_FOCUS_DOWN, 0, 1},
    {"Left", ELM_FOCUS_LEFT, -1, 0},
    {"Right", ELM_FOCUS_RIGHT, 1, 0},
}};

const Arrow *arrow_of(const std::string &key)
{
    for (const auto &arrow : kArrows) {
        if (key == arrow.key)
            return &arrow;
    }
    return nullptr;
}

/* The next row that may have the focus; past the end the first one from the other end when the list goes round. */
Elm_Object_Item *next_row(const Evas_Object *list, const Elm_Object_Item *from, bool down)
{
    const auto step = [down](const Elm_Object_Item *row) {
        return down ? elm_genlist_item_next_get(row) : elm_genlist_item_prev_get(row);
    };
    for (auto *row = step(from); row; row = step(row)) {
        if (row_may_focus(row))
            return row;
    }
    if (!elm_object_scroll_item_loop_enabled_get(list))
        return nullptr;
    for (auto *row = down ? elm_genlist_first_item_get(list) : elm_genlist_last_item_get(list); row && row != from;
         row = step(row)) {
        if (row_may_focus(row))
            return row;
    }
    return nullptr;
}

bool move_in_list(Evas_Object *list, const Arrow &arrow)
{
    auto *row = elm_object_focused_item_get(list);
    if (!row || arrow.y == 0)
        return false;
    auto *next = next_row(list, row, arrow.y > 0);
    if (next)
        elm_object_item_focus_set(next, EINA_TRUE);
    return next;
}

struct Place {
    int left, top, right, bottom;
};

Place place_of(const Evas_Object *object)
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    evas_object_geometry_get(object, &x, &y, &width, &height);
    return {x, y, x + width, y + height};
}

/* How far `to` lies from `from` in the arrow's direction, a step aside counting double; nothing when it does not. */
std::optional<int> distance(const Place &from, const Place &to, const Arrow &arrow)
{
    const int ahead = arrow.x > 0   ? to.left - from.right
                      : arrow.x < 0 ? from.left - to.right
                      : arrow.y > 0 ? to.top - from.bottom
                                    : from.top - to.bottom;
    if (ahead < 0)
        return {};
    const int aside = arrow.x != 0 ? std::abs((to.top + to.bottom) - (from.top + from.bottom)) / 2
                                   : std::abs((to.left + to.right) - (from.left + from.right)) / 2;
    return ahead + 2 * aside;
}

Evas_Object *nearest(const Widgets &widgets, const Evas_Object *from, const Arrow &arrow)
{
    Evas_Object *best = nullptr;
    int best_distance = 0;
    for (auto *widget : widgets.focusable()) {
        const auto away = distance(place_of(from), place_of(widget), arrow);
        if (!away || (best && *away >= best_distance))
            continue;
        best = widget;
        best_distance = *away;
    }
    return best;
}

const Arrow &opposite(const Arrow &arrow)
{
    return *std::ranges::find_if(kArrows,
                                 [&](const Arrow &other) { return other.x == -arrow.x && other.y == -arrow.y; });
}

/* The neighbour in the focus chain. A module that learns late that the language runs from right to left has named it
   for the other side: it is taken when it lies on this one. To see it: Arabic, Left on a row, and the second button had
   the focus. A widget that is its own neighbour keeps the focus. Without a neighbour that may have the focus, what lies
   nearest on that side. */
Evas_Object *neighbour(const Widgets &widgets, Evas_Object *from, const Arrow &arrow)
{
    auto *chained = elm_object_focus_next_object_get(from, arrow.direction);
    if (chained == from)
        return nullptr;
    if (widgets.may_focus(chained))
        return chained;
    auto *mirrored = elm_object_focus_next_object_get(from, opposite(arrow).direction);
    if (arrow.x != 0 && mirrored != from && widgets.may_focus(mirrored) &&
        distance(place_of(from), place_of(mirrored), arrow))
        return mirrored;
    return nearest(widgets, from, arrow);
}

} // namespace

bool Arrows::holds(const std::string &key)
{
    focus_.bring();
    return arrow_of(key) || widgets_.focusable().empty();
}

void Arrows::move(const std::string &key)
{
    const auto *arrow = arrow_of(key);
    auto *focused = elm_object_focused_object_get(widgets_.window());
    if (!arrow || !widgets_.may_focus(focused))
        return;
    if (is_list(focused) && move_in_list(focused, *arrow))
        return;
    if (auto *next = neighbour(widgets_, focused, *arrow))
        elm_object_focus_set(next, EINA_TRUE);
}

} // namespace vesk::efl
