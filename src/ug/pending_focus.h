#pragma once
/* One object that gets the focus a little later. */

#include <Elementary.h>

/* Gives `object` the focus 0.01 s from now, when the popup that opens or closes has settled. A later call takes the
 * place of an earlier one. An object that is deleted before then is forgotten. */
void focus_soon(Evas_Object *object);

/* Forgets an object that is still to be focused. */
void forget_focus();

/* Timer callback: gives the object `data` the focus; returns ECORE_CALLBACK_CANCEL. */
Eina_Bool _timer_cb(void *data);
