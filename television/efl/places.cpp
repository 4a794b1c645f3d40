/* Popups are where they are meant to be, and on the panel. A module may place a popup by numbers that are meant for the
   wide panel; on a turned one it would lie outside, with the focus in it. In a right-to-left language they are also
   meant for a popup of the drop-down's size; one of the panel's size shows the drop-down in its middle, far from its
   row. To see it: Arabic, a board or portrait, Return on a row. */

#include "television/efl/places.h"

#include <algorithm>
#include <array>
#include <cmath>
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
constexpr int kListMiddle = 1130;    /* of the wide panel, which the numbers mirror at */
constexpr double kContentInset = 10; /* of the list within the drop-down, in the theme's design pixels */
/* Of the numbers that a module places a popup by: two are pixels at every scale, the others grow with it. */
constexpr int kRise = 93; /* the popup's top above the row's bottom, less kDrop */
constexpr int kDrop = 15;
constexpr int kRowEnd = 80; /* between the popup's end and the row's */

struct Place {
    int x = 0;
    int y = 0;
    bool operator==(const Place &) const = default;
};

/* The popup that was placed last: where the module wants it, which holds for every form of the panel; where it was put;
   and the sizes of both then. */
struct Placed {
    const Evas_Object *popup = nullptr;
    Place wanted;
    Place put;
    int width = 0;
    int height = 0;
    int panel_width = 0;
};
Placed last;

struct Size {
    int width;
    int height;
};

/* What a popup of that size has to move by, since the numbers are meant for a scale of 1. Where it has the panel's
   size, it is placed by its middle. */
Place correction(const Size &popup, const Size &panel)
{
    const double scale = shown_scale();
    const double drawn = scale * elm_object_scale_get(window());
    const bool whole = popup.width == panel.width;
    double x = 0;
    double y = 0;
    if (elm_config_mirrored_get()) {
        x = 2.0 * (list_middle() - kListMiddle) + kRowEnd * (drawn - 1.0);
        y = kRise - kDrop * scale - (kRise - kDrop) * drawn;
    } else {
        x = whole ? panel.width / 2.0 * (scale - 1.0) : 0.0;
        y = ((whole ? panel.height / 2.0 : 0.0) - kRise) * (scale - 1.0);
    }
    return {static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))};
}

void remember(Evas_Object *popup, const Placed &placed)
{
    const auto forget = [](void *, Evas *, Evas_Object *gone, void *) {
        if (last.popup == gone)
            last = {};
    };
    if (last.popup != popup)
        evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, forget, nullptr);
    last = placed;
}

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

void keep_on_panel()
{
    auto *popup = scope();
    const auto *content = popup != window() ? elm_object_content_get(popup) : nullptr;
    if (!content)
        return;
    int panel_width = 0;
    int panel_height = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int popup_x = 0;
    int popup_y = 0;
    int popup_width = 0;
    int popup_height = 0;
    evas_object_geometry_get(window(), nullptr, nullptr, &panel_width, &panel_height);
    evas_object_geometry_get(content, &x, &y, &width, nullptr);
    evas_object_geometry_get(popup, &popup_x, &popup_y, &popup_width, &popup_height);
    const bool placed = popup_x != 0 || popup_y != 0;
    if (!placed && popup == last.popup && panel_width == last.panel_width && popup_width > last.width) {
        /* A panel that turns fills itself with every popup; it has turned back now. */
        evas_object_resize(popup, last.width, last.height);
        evas_object_move(popup, last.put.x, last.put.y);
        return;
    }
    if (!placed || width == 0 || width > panel_width)
        return;
    /* What is placed by a module has its content in its middle. A popup that fills the panel needs no place, and until
       it is laid out its content lies somewhere. */
    if (std::abs(2 * (x - popup_x) + width - popup_width) > 2)
        return;
    if (popup != last.popup && popup_width != panel_width && shown_scale() != 1.0) {
        /* The module takes its height by the window's scale alone. */
        popup_height = static_cast<int>(std::lround(popup_height * shown_scale()));
        evas_object_resize(popup, popup_width, popup_height);
    }
    const Place now{popup_x, popup_y};
    const Place wanted = last.popup == popup && last.put == now ? last.wanted : now;
    const Place moved = correction({popup_width, popup_height}, {panel_width, panel_height});
    Place place{wanted.x + moved.x, wanted.y + moved.y};
    if (elm_config_mirrored_get() && popup_width == panel_width) {
        place.x -= x - static_cast<int>(kContentInset * shown_scale() * elm_object_scale_get(window())) - popup_x;
        place.y -= y - popup_y;
    }
    const int margin = std::min(kMargin, (panel_width - width) / 2);
    const int before_content = x - popup_x;
    place.x = std::clamp(place.x + before_content, margin, panel_width - margin - width) - before_content;
    remember(popup, {popup, wanted, place, popup_width, popup_height, panel_width});
    if (place != now)
        evas_object_move(popup, place.x, place.y);
}

} // namespace vesk::efl
