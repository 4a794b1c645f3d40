#pragma once
/* The drop-down beside a device's row: allow, deny, view details. */

#include <Elementary.h>

#include "ug/rows.h"
#include "ug/screen_reader.h"

struct AppData;

/* On an interactive board the open drop-down is armed: its own preselection counts as the first tap, the user's next
 * tap runs the focused choice. Cleared when a drop-down opens, when an action gives the list its focus back, when the
 * details open and when the list is rebuilt; a decision that goes to the service leaves it alone. */
extern bool b_popup_expanded;

/* Position of the choice to act on, from 0. */
extern int32_t g_subpopup_index;

/* The preselected row of the drop-down. */
extern Elm_Object_Item *pItem;

/* Opens the drop-down: select callback of the main list's rows; `data` is the AppData. */
void _create_popup(void *data, Evas_Object *obj, void *event_info);

/* Text of a choice; `data` is its position. The toolkit frees the text. */
char *_item_labell_get(void *data, Evas_Object *obj, const char *part);

/* Closes the drop-down and carries out the focused choice for the selected device. */
void _item_selected(AppData *app);

/* Key-down callback of the drop-down's list: Return carries out the choice. Not used on a board. */
void _item_selected_cb(void *data, Evas *canvas, Evas_Object *obj, void *event_info);

/* On a board: select callback of the choices, and a touch outside the drop-down. */
void _item_selected_cb_tablo(void *data, Evas_Object *obj, void *event_info);

/* Callback of the drop-down list's "realized": screen-reader text of the row `event_info`. */
void subpopupRealizedCb(void *data, Evas_Object *obj, void *event_info);

/* Gives back the class of the last drop-down's rows: when the next one opens and when the screen goes. */
void release_choice_class();

/* Forgets the drop-down that is on the screen, with the class of its rows; the window keeps the drop-down. */
void forget_dropdown();

/* Key-down callback of the drop-down: Back and Close dismiss it; the choice that the counter holds is spoken. */
void Close_popup_On_returnKey(void *data, Evas *canvas, Evas_Object *obj, void *event_info);
