#pragma once
/* Keys of the whole screen. */

#include <Elementary.h>

#include "ug/edit_mode.h"

/* Row of the main list, from 0, that the up and down keys have reached; it is only kept up to date. */
extern int32_t current_position;

/* Key-down callback of the base popup; `data` is the AppData. Back and Close end the module, Back leaves edit mode. */
void Close_app_On_returnKey(void *data, Evas *canvas, Evas_Object *obj, void *event_info);
