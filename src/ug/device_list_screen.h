#pragma once
/* The main screen: the list of registered devices, or a text when there is none, and two buttons. */

#include <Elementary.h>

struct AppData;

/* Builds the screen into app->base and stores `app` in app_data. */
void _create_c_popup_right(AppData *app);

/* Appends the first `count` table rows to app->genlist and focuses the first. */
void create_genlist(AppData *app, int count);

/* Text of a row (its data is a DeviceEntry): the name in "elm.text", the access status in "elm.text.1", nothing in any
 * other part. The toolkit frees the text. */
char *_item_label_get(void *data, Evas_Object *obj, const char *part);

/* Content of a row: the device's picture in "elm.swallow.icon". */
Evas_Object *_item_content_get(void *data, Evas_Object *obj, const char *part);

/* Callback of the list's "realized": layout, check box and screen-reader text of the row `event_info`. */
void genlistRealizedCb(void *data, Evas_Object *obj, void *event_info);

/* Wraps `content` in a new one-cell table on `parent` that is at least `width` x `height` pixels at the base scale.
 * The callers have scaled these sizes already and they are scaled once more here, which is the size that is wanted.
 * The sizing rectangle is stored in the record's list_rect for the main list, in action_rect otherwise. The parent
 * owns the table. */
Evas_Object *widget_min_set(Evas_Object *content, Evas_Object *parent, int width, int height, bool is_main);

/* True when the on-screen menu is set to portrait; a setting that cannot be read is logged and means landscape. */
bool is_portrait_mode();

/* A new, empty main list on `parent`, which owns it. */
Evas_Object *add_main_list(Evas_Object *parent);

/* Makes app->genlist, in its wrapper of the main list's size, the content of the base popup. What was there before is
 * deleted by the toolkit. */
void set_main_list_content(AppData *app);
