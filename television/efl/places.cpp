/* Popups are where they are meant to be, and on the panel. A module may place a popup by numbers that are meant for the
   wide panel; on a turned one it would lie outside, with the focus in it. In a right-to-left language they are also
   meant for a popup of the drop-down's size; one of the panel's size shows the drop-down in its middle, far from its
   row. To see it: Arabic, a board or portrait, Return on a row. */

#include "television/efl/places.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>

#include "television/efl/mending.h"
#include "television/efl/widgets.h"
#include "television/theme_variants.h"

namespace vesk::efl {

namespace {

constexpr int kMargin = 24;
constexpr std::array<std::string_view, 6> kPlain{"image", "line", "polygon", "rectangle", "text", "textblock"};

} // namespace

/* A layout whose theme group has come to need other sizes is not measured again by itself, and keeps the size that it
   had on the panel before. To see it: turn the panel while the list is open. Innermost first, as each asks what lies in
   it. */
void lay_out_again(Evas_Object *object)
{
    const std::string type = evas_object_type_get(object);
    if (std::ranges::find(kPlain, type) != kPlain.end())
        return;
    Eina_List *members = evas_object_smart_members_get(object);
    for (const Eina_List *link = members; link; link = eina_list_next(link))
        lay_out_again(static_cast<Evas_Object *>(eina_list_data_get(link)));
    eina_list_free(members);
    if (type == "elm_layout" || type == "elm_popup" || type == "elm_button")
        elm_layout_sizing_eval(object);
}

Places::Places(const Widgets &widgets)
    : widgets_(widgets), list_middle_(theme_number("vesk/list-middle")),
      content_inset_(theme_number("vesk/dropdown-inset"))
{
}

void Places::remember(Evas_Object *popup, const Placed &placed)
{
    const auto forget = [](void *, Evas *, Evas_Object *gone, void *) {
        auto *mending = Mending::current();
        if (mending && mending->places.last_.popup == gone)
            mending->places.last_ = {};
    };
    if (last_.popup != popup)
        evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, forget, nullptr);
    last_ = placed;
}

void Places::keep_on_panel()
{
    auto *popup = widgets_.scope();
    const auto *content = popup != widgets_.window() ? elm_object_content_get(popup) : nullptr;
    if (!content)
        return;
    int panel_width = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int popup_x = 0;
    int popup_y = 0;
    int popup_width = 0;
    int popup_height = 0;
    evas_object_geometry_get(widgets_.window(), nullptr, nullptr, &panel_width, nullptr);
    evas_object_geometry_get(content, &x, &y, &width, nullptr);
    evas_object_geometry_get(popup, &popup_x, &popup_y, &popup_width, &popup_height);
    const bool placed = popup_x != 0 || popup_y != 0;
    if (!placed && popup == last_.popup && panel_width == last_.panel_width && popup_width > last_.width) {
        /* A panel that turns fills itself with every popup; it has turned back now. */
        evas_object_resize(popup, last_.width, last_.height);
        evas_object_move(popup, last_.put.x, last_.put.y);
        return;
    }
    if (!placed || width == 0 || width > panel_width)
        return;
    /* What is placed by a module has its content in its middle. A popup that fills the panel needs no place, and until
       it is laid out its content lies somewhere. */
    if (std::abs(2 * (x - popup_x) + width - popup_width) > 2)
        return;
    const Point now{popup_x, popup_y};
    const Point wanted = last_.popup == popup && last_.put == now ? last_.wanted : now;
    Point place = wanted;
    if (elm_config_mirrored_get()) {
        place.x += panel_width < list_middle_ ? panel_width - 2 * list_middle_ : 0;
        if (popup_width == panel_width) {
            place.x -= x - static_cast<int>(content_inset_ * elm_object_scale_get(widgets_.window())) - popup_x;
            place.y -= y - popup_y;
        }
    }
    const int margin = std::min(kMargin, (panel_width - width) / 2);
    const int before_content = x - popup_x;
    place.x = std::clamp(place.x + before_content, margin, panel_width - margin - width) - before_content;
    remember(popup, {popup, wanted, place, popup_width, popup_height, panel_width});
    if (place != now)
        evas_object_move(popup, place.x, place.y);
}

} // namespace vesk::efl
