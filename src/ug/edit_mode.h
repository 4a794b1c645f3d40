#pragma once
/* Edit mode: the list with check boxes, from which the user picks devices to delete. */

#include <Elementary.h>

#include "ug/edit_state.h"

/* The first button's "clicked": begins edit mode; in edit mode selects or deselects all. `data` is the AppData. */
void _editbutton_cb(void *data, Evas_Object *obj, void *event_info);

/* Content of a row in edit mode: a check box in "elm.swallow.checkbox", the picture in "elm.swallow.icon". */
Evas_Object *_checkbox_content_get(void *data, Evas_Object *obj, const char *part);

/* Select callback of a row in edit mode: turns its mark over. `data` is the AppData. */
void _checkbox_cb(void *data, Evas_Object *obj, void *event_info);

/* Callback of the list's "realized" in edit mode: the row `event_info` gets the layout with a check box. */
void _edit_item_realized_cb(void *data, Evas_Object *obj, void *event_info);

/* The second button's "clicked": closes the module; in edit mode asks for the deletion. `data` is the AppData. */
void _closebutton_cb(void *data, Evas_Object *obj, void *event_info);

/* Leaves edit mode, or closes the module outside it; `data` is the AppData. Serves the Back key in edit mode and, on an
 * interactive board, the third button and a touch outside the popup. */
void Clicked_outside_app_cb(void *data, Evas_Object *obj, void *event_info);

/* True when any row in use is marked; writes the answer to the log. */
bool check_selected_any();
