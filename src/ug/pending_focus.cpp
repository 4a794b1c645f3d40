#include "ug/pending_focus.h"

#include "log.h"

static Ecore_Timer *focus_timer;

void focus_soon(Evas_Object *object)
{
    forget_focus();
    focus_timer = ecore_timer_add(0.01, _timer_cb, object);
}

void forget_focus()
{
    if (focus_timer)
        ecore_timer_del(focus_timer);
    focus_timer = nullptr;
}

Eina_Bool _timer_cb(void *data)
{
    focus_timer = nullptr;
    LOG_I("  _timer_cb  [%p]", data);
    elm_object_focus_set(static_cast<Evas_Object *>(data), EINA_TRUE);
    return ECORE_CALLBACK_CANCEL;
}
