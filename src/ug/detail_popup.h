#pragma once
/* The popup with a device's details: which services it uses with the television. */

#include <Elementary.h>

struct AppData;

/* Opens the popup for the device of selected_item_index. */
void show_detail_popup(AppData *app);

/* The close button's "clicked". `data` is the AppData. */
void _close_button_cb(void *data, Evas_Object *obj, void *event_info);

/* A touch outside the popup, on an interactive board. `data` is the AppData. */
void Close_detail_popup_On_touch_outside(void *data, Evas_Object *obj, void *event_info);

/* Key-down callback of the popup: Back and Close close it. `data` is the AppData. */
void Close_detail_popup_On_returnKey(void *data, Evas *canvas, Evas_Object *obj, void *event_info);

/* Screen-reader text of the whole popup, asked from its close button. The toolkit frees the text. */
char *_detail_screen_reader(void *data, Evas_Object *obj);
