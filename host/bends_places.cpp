/* Popups stay on the panel. A module may place a popup by numbers that are meant for the wide panel; on a turned one it
   would lie outside, with the focus in it. To see it: a right-to-left language, portrait, Return on a row. */

#include "bends.h"

#include <algorithm>
#include <cstdlib>

namespace vesk::bends {

namespace {

constexpr int kMargin = 24;

} // namespace

void keep_on_panel()
{
    auto *popup = scope();
    const auto *content = popup != window() ? elm_object_content_get(popup) : nullptr;
    if (!content)
        return;
    int panel_width = 0;
    int x = 0;
    int width = 0;
    int popup_x = 0;
    int popup_y = 0;
    int popup_width = 0;
    evas_object_geometry_get(window(), nullptr, nullptr, &panel_width, nullptr);
    evas_object_geometry_get(content, &x, nullptr, &width, nullptr);
    evas_object_geometry_get(popup, &popup_x, &popup_y, &popup_width, nullptr);
    const bool placed = popup_x != 0 || popup_y != 0;
    if (!placed || width == 0 || width > panel_width)
        return;
    /* What is placed by a module has its content in its middle. A popup that fills the panel needs no place, and until
       it is laid out its content lies somewhere. */
    if (std::abs(2 * (x - popup_x) + width - popup_width) > 2)
        return;
    const int margin = std::min(kMargin, (panel_width - width) / 2);
    const int place = std::clamp(x, margin, panel_width - margin - width);
    if (place != x)
        evas_object_move(popup, popup_x + place - x, popup_y);
}

} // namespace vesk::bends
