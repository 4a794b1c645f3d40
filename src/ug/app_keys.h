#pragma once
/* Keys of the whole screen, and the touch outside it. */

#include <Elementary.h>

/* Row of the main list, from 0, that the up and down keys have reached; it is only kept up to date. */
extern int32_t current_position;

/* Key-down callback of the base popup; `data` is the AppData. Back and Close end the module, Back leaves edit mode. */
void Close_app_On_returnKey(void *data, Evas *canvas, Evas_Object *obj, void *event_info);

/* Leaves edit mode, or closes the module outside it; `data` is the AppData. Serves the Back key in edit mode and, on an
 * interactive board, the third button and a touch outside the popup. */
void Clicked_outside_app_cb(void *data, Evas_Object *obj, void *event_info);
