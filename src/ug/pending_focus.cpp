#include "ug/pending_focus.h"

#include "log.h"

/* Both are null while no object waits. */
static Ecore_Timer *focus_timer;
static Evas_Object *waiting_object;

static void forget_deleted(void * /*data*/, Evas * /*canvas*/, Evas_Object * /*obj*/, void * /*event_info*/)
{
    forget_focus();
}

static void end_wait()
{
    if (waiting_object)
        evas_object_event_callback_del(waiting_object, EVAS_CALLBACK_DEL, forget_deleted);
    waiting_object = nullptr;
    focus_timer = nullptr;
}

void focus_soon(Evas_Object *object)
{
    forget_focus();
    if (object)
        evas_object_event_callback_add(object, EVAS_CALLBACK_DEL, forget_deleted, nullptr);
    waiting_object = object;
    focus_timer = ecore_timer_add(0.01, _timer_cb, object);
}

void forget_focus()
{
    if (focus_timer)
        ecore_timer_del(focus_timer);
    end_wait();
}

Eina_Bool _timer_cb(void *data)
{
    end_wait();
    LOG_I("  _timer_cb  [%p]", data);
    elm_object_focus_set(static_cast<Evas_Object *>(data), EINA_TRUE);
    return ECORE_CALLBACK_CANCEL;
}
