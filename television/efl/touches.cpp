/* Touches while the focus is forbidden to everything. The toolkit keeps the keys from widgets that may not have the
   focus and not the touches: a module that forbids the focus while a message is up hears of touches that it is not
   ready for. A touch beside the popup is left alone, since it is a wish to close. To see it: delete a device and touch
   Edit while the toast is up; the buttons of the edit mode are then as the end of the toast leaves them. */

#include "television/efl/touches.h"

#include <algorithm>

#include "television/efl/widgets.h"

namespace vesk::efl {

void Touches::keep()
{
    if (widgets_.scope() != widgets_.window() && widgets_.focusable().empty()) {
        for (auto *widget : widgets_.key_takers()) {
            if (std::ranges::find(held_, widget) != held_.end())
                continue;
            evas_object_freeze_events_set(widget, EINA_TRUE);
            held_.push_back(widget);
        }
        return;
    }
    for (auto *widget : held_)
        evas_object_freeze_events_set(widget, EINA_FALSE);
    held_.clear();
}

} // namespace vesk::efl
