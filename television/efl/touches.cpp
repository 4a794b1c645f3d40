/* Touches while the focus is forbidden to everything. The toolkit keeps the keys from widgets that may not have the
   focus and not the touches: a module that forbids the focus while a message is up hears of touches that it is not
   ready for. A touch beside the popup is left alone, since it is a wish to close. To see it: delete a device and touch
   Edit while the toast is up; the buttons of the edit mode are then as the end of the toast leaves them. */

#include "television/efl/touches.h"

#include "television/efl/widgets.h"

namespace vesk::efl {

Touches::~Touches()
{
    for (auto *shield : shields_)
        evas_object_del(shield);
}

void Touches::keep()
{
    std::vector<Eina_Rectangle> areas;
    if (widgets_.scope() != widgets_.window() && widgets_.focusable().empty()) {
        for (auto *widget : widgets_.key_takers()) {
            Eina_Rectangle area{};
            evas_object_geometry_get(widget, &area.x, &area.y, &area.w, &area.h);
            if (evas_object_visible_get(widget))
                areas.push_back(area);
        }
    }
    while (shields_.size() > areas.size()) {
        evas_object_del(shields_.back());
        shields_.pop_back();
    }
    while (shields_.size() < areas.size()) {
        auto *shield = evas_object_rectangle_add(evas_object_evas_get(widgets_.window()));
        evas_object_color_set(shield, 0, 0, 0, 0);
        evas_object_layer_set(shield, EVAS_LAYER_MAX);
        evas_object_show(shield);
        shields_.push_back(shield);
    }
    for (size_t i = 0; i < areas.size(); ++i)
        evas_object_geometry_set(shields_[i], areas[i].x, areas[i].y, areas[i].w, areas[i].h);
}

} // namespace vesk::efl
