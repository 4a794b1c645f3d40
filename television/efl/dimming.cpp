/* A popup stays dimmed as long as the popup that it was dimmed for lies over it. The toolkit passes every signal on to
   the theme, whoever is late with it. To see it: open the confirmation while the toast of the deletion before is up;
   the toast ends, and the list behind the question is as bright as the question. */

#include "television/efl/dimming.h"

#include <algorithm>
#include <string_view>

#include "desktop/fence.h"
#include "television/efl/mending.h"
#include "television/efl/widgets.h"

namespace vesk::efl {

namespace {

/* The layout that a popup passes its signals to: the content of the notify that every popup holds. */
Evas_Object *layout_of(Evas_Object *object)
{
    if (std::string_view(evas_object_type_get(object)) == "elm_notify")
        return elm_object_content_get(object);
    if (is_plain(object))
        return nullptr;
    Evas_Object *found = nullptr;
    Eina_List *members = evas_object_smart_members_get(object);
    for (const Eina_List *link = members; link && !found; link = eina_list_next(link))
        found = layout_of(static_cast<Evas_Object *>(eina_list_data_get(link)));
    eina_list_free(members);
    return found;
}

} // namespace

void Dimming::popup_added(Evas_Object *popup)
{
    auto *layout = layout_of(popup);
    if (!layout)
        return;
    elm_object_signal_callback_add(layout, "theme,dimmed,*", "", dimmed, popup);
    elm_object_signal_callback_add(layout, "theme,undim", "", undimmed, popup);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, popup_gone, nullptr);
}

/* Signals are told when the present turn of the main loop has done with them: the popup that this one was dimmed for
   is there by then, or gone. */
void Dimming::dimmed(void *popup, Evas_Object *, const char *signal, const char *)
{
    auto *mending = Mending::current();
    if (!mending)
        return;
    vesk_port::fenced("dimming", [&] {
        auto &self = mending->dimming;
        auto *object = static_cast<Evas_Object *>(popup);
        const auto *above = self.widgets_.scope();
        std::erase_if(self.dimmed_, [popup](const Dimmed &entry) { return entry.popup == popup; });
        if (above != object)
            self.dimmed_.push_back({object, above, signal});
    });
}

void Dimming::undimmed(void *popup, Evas_Object *, const char *, const char *)
{
    if (auto *mending = Mending::current())
        vesk_port::fenced("dimming", [&] { mending->dimming.undim(static_cast<Evas_Object *>(popup)); });
}

void Dimming::undim(Evas_Object *popup)
{
    const auto entry = std::ranges::find(dimmed_, popup, &Dimmed::popup);
    if (entry == dimmed_.end())
        return;
    const auto shown = widgets_.shown_popups();
    if (std::ranges::find(shown, entry->above) != shown.end())
        elm_object_signal_emit(popup, entry->signal.c_str(), "");
    else
        dimmed_.erase(entry);
}

void Dimming::popup_gone(void *, Evas *, Evas_Object *popup, void *)
{
    if (auto *mending = Mending::current())
        std::erase_if(mending->dimming.dimmed_, [popup](const Dimmed &entry) { return entry.popup == popup; });
}

} // namespace vesk::efl
