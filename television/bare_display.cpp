#include "television/bare_display.h"

#include <Ecore_X.h>

namespace vesk {

namespace {

/* Whoever manages windows has asked the server to be the one who shows them, which this mask stands for. */
bool has_window_manager(Ecore_X_Window window)
{
    Ecore_X_Window_Attributes root{};
    return !ecore_x_window_attributes_get(ecore_x_window_root_get(window), &root) ||
           (root.event_mask.all & ECORE_X_EVENT_MASK_WINDOW_CHILD_CONFIGURE);
}

Eina_Bool take_keyboard(void *window, int, void *event)
{
    const auto shown = static_cast<Ecore_X_Event_Window_Show *>(event)->win;
    if (shown == elm_win_xwindow_get(static_cast<Evas_Object *>(window)))
        ecore_x_window_focus(shown);
    return ECORE_CALLBACK_PASS_ON;
}

void forget_keyboard(void *handler, Evas *, Evas_Object *, void *)
{
    ecore_event_handler_del(static_cast<Ecore_Event_Handler *>(handler));
}

} // namespace

bool stand_alone(Evas_Object *window)
{
    const Ecore_X_Window x_window = elm_win_xwindow_get(window);
    if (!x_window || has_window_manager(x_window))
        return false;
    elm_win_override_set(window, EINA_TRUE);
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    elm_win_screen_size_get(window, &left, &top, &width, &height);
    evas_object_move(window, left, top);
    evas_object_resize(window, width, height);
    auto *handler = ecore_event_handler_add(ECORE_X_EVENT_WINDOW_SHOW, take_keyboard, window);
    evas_object_event_callback_add(window, EVAS_CALLBACK_DEL, forget_keyboard, handler);
    return true;
}

} // namespace vesk
