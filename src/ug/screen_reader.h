#pragma once
/* Texts that the screen reader speaks: information callbacks of the toolkit. Each returns a new text that the toolkit
 * frees, or null when there is nothing to say. */

#include <Elementary.h>

/* The screen's introduction is still to be read; it is read once for as long as the module is loaded. */
extern bool b_check_tts;

/* The screen reader's idea of the focused choice. It counts three choices also while the third is disabled. */
extern int32_t subpopup_position;

/* Whether the drop-down's introduction has been read aloud. */
extern bool b_subpopup_entered;

/* Whether the confirmation's introduction has been read aloud. */
extern bool b_delete_popup_entered;

/* The close button of the empty screen: the introduction, once. */
char *_noitem_screen_reader(void *data, Evas_Object *obj);

/* A row of the main list; `data` is the row. In edit mode every row is read as unchecked: its state is spoken when it
 * changes. */
char *_list_reader(void *data, Evas_Object *obj);

/* A choice of the drop-down: the introduction with the device's present state, once for an open drop-down. It is also
 * spoken at once. */
char *_subpopup_screen_reader(void *data, Evas_Object *obj);

/* Both buttons of the confirmation: the question the first time, then Yes alone, for No as well. It is also spoken at
 * once. */
char *_delete_screen_reader(void *data, Evas_Object *obj);
