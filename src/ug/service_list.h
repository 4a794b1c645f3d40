#pragma once
/* The list of services inside the detail popup.
 *
 * Each getter walks the services of the selected device with a cursor of its own and names the next one with each
 * call, whatever row it is called for. A cursor that is left with bits carries them into the next opening. Both are
 * part of the design. */

#include <Elementary.h>

struct AppData;

/* Lets both cursors begin anew. */
void reset_service_cursors();

/* Number of services that the selected device uses: 0, 1 or 2. Fills `services` with their texts. */
int get_service_count();

/* Text and picture of the next service; `data` is a DeviceEntry and only tested for null. The toolkit frees the text
 * and owns the picture. */
char *_service_item_label_get(void *data, Evas_Object *obj, const char *part);
Evas_Object *_service_item_content_get(void *data, Evas_Object *obj, const char *part);

/* Select callback of a row; `data` is the AppData. A row keeps no selected look. */
void _service_genlist_cb(void *data, Evas_Object *obj, void *event_info);

/* Callback of the list's "realized": layout and screen-reader text of the row `event_info`. */
void genlistRealizedCbDetail(void *data, Evas_Object *obj, void *event_info);

/* Callbacks of "item,focused" and "item,unfocused": the colour of the picture of the row `event_info`. */
void _service_item_focus_cb(void *data, Evas_Object *obj, void *event_info);
void _service_item_unfocus_cb(void *data, Evas_Object *obj, void *event_info);

/* Builds the list of the selected device's services on `table`, which owns it, and stores it in the record. The list
 * stays empty and hidden when the toolkit has no row class. */
Evas_Object *service_genlist(AppData *app, Evas_Object *table);
