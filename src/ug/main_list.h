#pragma once
/* The list of the main screen: making it, filling it, putting a new one in its place. */

#include <Elementary.h>

struct AppData;

/* A new, empty main list on `parent`, which owns it. */
Evas_Object *add_main_list(Evas_Object *parent);

/* Makes app->genlist, in its wrapper of the main list's size, the content of the base popup. What was there before is
 * deleted by the toolkit. */
void set_main_list_content(AppData *app);

/* Appends the first `count` table rows to app->genlist and focuses the first. */
void create_genlist(AppData *app, int count);

/* Callback of the list's "realized": layout, check box and screen-reader text of the row `event_info`. */
void genlistRealizedCb(void *data, Evas_Object *obj, void *event_info);

/* Puts a new list of the current devices into the base popup, which ends edit mode. Closes the module when no device
 * is left. */
void refresh_genlist(AppData *app);
