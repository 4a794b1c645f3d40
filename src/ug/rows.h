#pragma once
/* Rows of the device list, in normal mode and in edit mode. */

#include <Elementary.h>

struct AppData;

/* Table row of the device that is acted on; the detail popup shows this device. */
extern int32_t selected_item_index;

/* Refreshes the table pointer of the current screen and device_count. */
void refresh_table();

/* Text of a row (its data is a DeviceEntry): the name in "elm.text", the access status in "elm.text.1", nothing in any
 * other part. The toolkit frees the text. */
char *_item_label_get(void *data, Evas_Object *obj, const char *part);

/* Content of a row: the device's picture in "elm.swallow.icon". */
Evas_Object *_item_content_get(void *data, Evas_Object *obj, const char *part);

/* A new class of device rows, which the caller frees with elm_genlist_item_class_free; null, with a line in the log,
 * when the toolkit has none. */
Elm_Genlist_Item_Class *new_row_class(Elm_Gen_Item_Content_Get_Cb content_get);

/* Appends rows for the first `count` table rows to app->genlist; `selected` is called with `app`. */
void append_device_rows(AppData *app, const Elm_Genlist_Item_Class *row_class, int count, Evas_Smart_Cb selected);

/* A new picture of the device `data` (a DeviceEntry) on `list`, which owns it. */
Evas_Object *add_device_icon(Evas_Object *list, const void *data);

/* Table row of a list row, or -1 when it has none within the table. */
int row_of_item(const Elm_Object_Item *item);

/* The check box of a row in edit mode; null when the row has none at present. */
Evas_Object *check_of_item(const Elm_Object_Item *item);

/* Lets the screen reader ask `callback` for the row's text, when the screen reader is on. */
void set_row_reader(Elm_Object_Item *item, Elm_Access_Info_Cb callback);

/* Takes the selection from the list's selected row, if there is one. */
void unselect_row(Evas_Object *list);
