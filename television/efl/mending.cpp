#include "television/efl/mending.h"

#include "desktop/fence.h"
#include "television/efl/sizes.h"
#include "television/efl/texts.h"
#include "television/reader/reader.h"

namespace vesk::efl {

namespace {

Mending *present = nullptr;

} // namespace

Mending::Mending(Evas_Object *window) : widgets(window)
{
    present = this;
    begin_texts();
    watch_ = ecore_idle_enterer_before_add(
        [](void *self) -> Eina_Bool {
            vesk_port::fenced("before the rest", [self] { static_cast<Mending *>(self)->before_rest(); });
            return ECORE_CALLBACK_RENEW;
        },
        this);
}

Mending::~Mending()
{
    ecore_idle_enterer_del(watch_);
    present = nullptr;
}

Mending *Mending::current()
{
    return present;
}

void Mending::before_rest()
{
    scale_lists_once(widgets);
    fit_popups(widgets);
    const bool rests = focus.keep();
    focus.show();
    if (auto *reader = Reader::current(); reader && rests)
        reader->focus_rests(widgets);
    touches.keep();
    places.keep_on_panel();
}

void Mending::popup_added(Evas_Object *popup)
{
    widgets.add_popup(popup);
    dimming.popup_added(popup);
    const auto gone = [](void *, Evas *, Evas_Object *, void *) {
        vesk_port::fenced("a popup's end", [] {
            if (present)
                present->focus.popup_gone();
        });
    };
    evas_object_event_callback_add(popup, EVAS_CALLBACK_FREE, gone, nullptr);
}

void Mending::key_taker_added(Evas_Object *widget)
{
    widgets.add_key_taker(widget);
    const auto realized = [](void *, Evas_Object *list, void *) {
        vesk_port::fenced("a row's first look", [list] {
            if (present)
                present->focus.row_realized(list);
        });
    };
    if (is_list(widget))
        evas_object_smart_callback_add(widget, "realized", realized, nullptr);
}

void Mending::key_taker_gone(const Evas_Object *widget)
{
    widgets.forget_key_taker(widget);
}

/* A check box in a row takes the row's Return key when it can be focused: the row is not selected then, and Down may
   not leave it. To see it: enter edit mode and press Return on a row. */
void Mending::check_added(Evas_Object *check, const Evas_Object *parent)
{
    if (is_list(parent))
        elm_object_focus_allow_set(check, EINA_FALSE);
    else
        key_taker_added(check);
}

} // namespace vesk::efl
