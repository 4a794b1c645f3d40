/* Sizes that come out wrong: of lists that are scaled twice, and of popups that have lost a button.

   A module may wrap a list in a table with a rectangle whose least size it has scaled twice, by the toolkit's scale.
   The theme scales too, so a list would grow by the square. To see it: --scale 1.5, and the list covers its buttons.

   A popup whose button is deleted keeps its place, and the height that it had with it. To see it: a turned board, Back
   in edit mode.
 */

#include "television/efl/sizes.h"

#include <Elementary.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "television/efl/widgets.h"
#include "television/theme_variants.h"

namespace vesk::efl {

namespace {

constexpr char kScaledOnce[] = "vesk.scaled-once"; /* on a rectangle: the width that it was given here */

constexpr std::array kButtonParts{"button1", "button2", "button3"};
constexpr char kPart[] = "vesk.popup-part"; /* on a button: where in its popup it is */
constexpr char kLeaving[] = "vesk.leaving"; /* on a popup: it is being deleted, its buttons with it */

void leave_popup(void *popup, Evas *, Evas_Object *button, void *)
{
    auto *owner = static_cast<Evas_Object *>(popup);
    if (!evas_object_data_get(owner, kLeaving))
        elm_object_part_content_unset(owner, static_cast<const char *>(evas_object_data_get(button, kPart)));
}

/* A popup names a button for a while that has been deleted, on which nothing may be kept any more. */
void watch_button(const Widgets &widgets, Evas_Object *popup, const char *part)
{
    auto *button = elm_object_part_content_get(popup, part);
    if (std::ranges::find(widgets.key_takers(), button) == widgets.key_takers().end() ||
        evas_object_data_get(button, kPart))
        return;
    evas_object_data_set(button, kPart, part);
    evas_object_event_callback_add(button, EVAS_CALLBACK_DEL, leave_popup, popup);
    const auto leaving = [](void *, Evas *, Evas_Object *gone, void *) { evas_object_data_set(gone, kLeaving, gone); };
    evas_object_event_callback_del(popup, EVAS_CALLBACK_DEL, leaving);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, leaving, nullptr);
}

/* The rectangle of a list's wrapper, or null: one with a least size, and no greatest one. */
Evas_Object *least_size_of(const Evas_Object *list)
{
    auto *table = elm_object_parent_widget_get(list);
    if (!table || std::string(evas_object_type_get(table)) != "elm_table")
        return nullptr;
    auto *rectangle = elm_table_child_get(table, 0, 0);
    if (!rectangle || std::string(evas_object_type_get(rectangle)) != "rectangle")
        return nullptr;
    int greatest = 0;
    evas_object_size_hint_max_get(rectangle, &greatest, nullptr);
    return greatest > 0 ? nullptr : rectangle;
}

} // namespace

void scale_lists_once(const Widgets &widgets)
{
    const double scale = shown_scale();
    if (scale <= 1.0)
        return; /* the theme's sizes are the larger ones */
    for (const auto *list : widgets.lists()) {
        auto *rectangle = least_size_of(list);
        int width = 0;
        int height = 0;
        if (rectangle)
            evas_object_size_hint_min_get(rectangle, &width, &height);
        if (width == 0 ||
            static_cast<int>(reinterpret_cast<intptr_t>(evas_object_data_get(rectangle, kScaledOnce))) == width)
            continue;
        width = static_cast<int>(std::lround(width / scale));
        evas_object_data_set(rectangle, kScaledOnce, reinterpret_cast<void *>(static_cast<intptr_t>(width)));
        evas_object_size_hint_min_set(rectangle, width, static_cast<int>(std::lround(height / scale)));
    }
}

void fit_popups(const Widgets &widgets)
{
    for (auto *popup : widgets.shown_popups()) {
        for (const char *part : kButtonParts)
            watch_button(widgets, popup, part);
    }
}

} // namespace vesk::efl
