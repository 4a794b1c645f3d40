/* Popups stay on the panel. A module may place a popup by numbers that are meant for the wide panel; on a turned one it
   would lie outside, with the focus in it. To see it: a right-to-left language, portrait, Return on a row. */

#include "bends.h"

#include <algorithm>

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
    evas_object_geometry_get(window(), nullptr, nullptr, &panel_width, nullptr);
    evas_object_geometry_get(content, &x, nullptr, &width, nullptr);
    if (width > panel_width)
        return;
    const int margin = std::min(kMargin, (panel_width - width) / 2);
    const int place = std::clamp(x, margin, panel_width - margin - width);
    evas_object_geometry_get(popup, &popup_x, &popup_y, nullptr, nullptr);
    if (place != x)
        evas_object_move(popup, popup_x + place - x, popup_y);
}

} // namespace vesk::bends
