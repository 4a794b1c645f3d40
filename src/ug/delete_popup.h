#pragma once
/* The confirmation of a deletion, and the toast that acknowledges it. */

#include <Elementary.h>
#include <glib.h>

#include "ug/pending_focus.h"
#include "ug/screen_reader.h"

struct AppData;

/* The toast is up: keys are only logged. */
extern bool b_disable_focus;

/* Main-loop source of the toast's end; keeps the spent id when the toast has ended. */
extern guint toastTimerTag;

/* Opens the confirmation over the main screen. */
void _create_delete_popup(AppData *app);

/* "clicked" of Yes: deletes the marked devices and shows the toast. `data` is the AppData. */
void _deletebutton_cb(void *data, Evas_Object *obj, void *event_info);

/* "clicked" of No: dismisses the confirmation. `data` is the AppData. */
void _cancelbutton_cb(void *data, Evas_Object *obj, void *event_info);

/* Key-down callback of the confirmation: Back and Close dismiss it. `data` is the AppData. */
void _close_delete_popup_on_returnkey(void *data, Evas *canvas, Evas_Object *obj, void *event_info);

/* Ends the toast: the screen takes keys again. `data` is the AppData. Returns FALSE: the source ends. */
gboolean __toast_timer_expired(gpointer data);

/* Forgets the toast that is up; the window keeps it. */
void forget_toast();
