#include "ug/focus.h"

#include <cstdio>

#include "ug/app_data.h"
#include "ug/direction.h"

void give_focus(Evas_Object *object)
{
    evas_object_focus_set(object, EINA_TRUE);
    elm_object_focus_set(object, EINA_TRUE);
}

void take_focus(Evas_Object *object)
{
    evas_object_focus_set(object, EINA_FALSE);
    elm_object_focus_set(object, EINA_FALSE);
}

void focus_object(Evas_Object *object)
{
    elm_object_focus_allow_set(object, EINA_TRUE);
    elm_win_focus_highlight_enabled_set(object, EINA_TRUE);
    give_focus(object);
}

void focus_list(AppData *app)
{
    elm_object_signal_emit(app->genlist, "elm,state,focused", "elm");
    focus_object(app->genlist);
}

void dim_button(Evas_Object *button)
{
    elm_object_signal_emit(button, "elm,state,dimmed", "elm");
    elm_object_focus_allow_set(button, EINA_FALSE);
}

void undim_button(Evas_Object *button)
{
    elm_object_signal_emit(button, "elm,state,undimmed", "elm");
    /* A turn of the screen in edit mode disables the second button instead of dimming it. */
    elm_object_disabled_set(button, EINA_FALSE);
    elm_object_focus_allow_set(button, EINA_TRUE);
}

void dim_behind(Evas_Object *object, int percent)
{
    char signal[sizeof "theme,dimmed,percent,100"];
    snprintf(signal, sizeof signal, "theme,dimmed,percent,%d", percent);
    elm_object_signal_emit(object, signal, "");
}

void undim_base(AppData *app)
{
    elm_object_signal_emit(app->base, "theme,undim", "");
}

Elm_Focus_Direction towards_buttons()
{
    return gbReverse ? ELM_FOCUS_LEFT : ELM_FOCUS_RIGHT;
}

Elm_Focus_Direction towards_list()
{
    return gbReverse ? ELM_FOCUS_RIGHT : ELM_FOCUS_LEFT;
}

void set_main_focus_chain(AppData *app)
{
    Evas_Object *list = app->genlist;
    Evas_Object *first = app->edit_button;
    Evas_Object *second = app->close_button;

    elm_object_focus_next_object_set(first, list, ELM_FOCUS_NEXT);
    elm_object_focus_next_object_set(first, list, towards_list());
    elm_object_focus_next_object_set(second, list, ELM_FOCUS_NEXT);
    elm_object_focus_next_object_set(second, list, towards_list());
    elm_object_focus_next_object_set(list, first, towards_buttons());

    elm_object_focus_next_object_set(list, list, ELM_FOCUS_DOWN);
    elm_object_focus_next_object_set(first, second, ELM_FOCUS_DOWN);
    elm_object_focus_next_object_set(list, list, ELM_FOCUS_UP);
    elm_object_focus_next_object_set(second, first, ELM_FOCUS_UP);
}
