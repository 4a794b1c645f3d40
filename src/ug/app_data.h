#pragma once
/* The application-data record that all screens share, and the facts of the product that they ask for.
 *
 * The record is the module's private data: allocated zero-filled by UG_MODULE_INIT, handed to every lifecycle callback
 * and to most toolkit callbacks, freed by UG_MODULE_EXIT. A handle is null while its object does not exist, but for
 * the few that stay behind after their popup has gone; the toolkit rejects those. */

#include <Elementary.h>
#include <ui_gadget.h>

struct DeviceEntry;

/* Slots of AppData::checks. */
constexpr int kCheckSlots = 100;

struct AppData {
    Evas_Object *base;                /* base popup on the host window: the main screen */
    Evas_Object *win;                 /* the host's window; parent of drop-down, details and toast */
    Evas_Object *genlist;             /* device list of the main screen */
    Evas_Object *action_popup;        /* a device's action drop-down */
    Evas_Object *action_rect;         /* gives the drop-down's list its size */
    Evas_Object *list_rect;           /* gives the main list its size */
    Evas_Object *action_aux;          /* companion of the drop-down; nothing is stored here */
    Evas_Object *edit_button;         /* first button: edit; select all in edit mode */
    Evas_Object *action_genlist;      /* list inside the drop-down */
    Evas_Object *noitem_label;        /* shown instead of the list when no device is registered */
    ui_gadget_h ug;                   /* the gadget, as the host knows it */
    Evas_Object *aux_object;          /* loses the focus when the module closes; nothing is stored here */
    DeviceEntry *table;               /* gVeskTable once it has been asked for */
    Evas_Object *close_button;        /* second button: close; delete in edit mode */
    Evas_Object *exit_button;         /* third button, in edit mode on an interactive board: leaves edit mode */
    Evas_Object *detail_close_button; /* close button of the detail popup */
    Evas_Object *detail_popup;        /* a device's details */
    Evas_Object *delete_popup;        /* confirmation of a deletion */
    Evas_Object *service_genlist;     /* list of services inside the detail popup */
    Evas_Object *checks[kCheckSlots]; /* check boxes in the order of their creation, across rebuilds */
    Evas_Object *edit_icon;           /* icon of the first button on an interactive board */
    Evas_Object *close_icon;          /* icon of the second button on an interactive board */
};

/* The record of the screen that has been built; callbacks without user data reach it here. */
extern AppData *app_data;

/* Whether the product can play its sound on a phone or tablet, and whether it is an interactive board. */
extern bool b_sound_mirroring, b_is_tablo;

/* Handle of the status callback at the registered-device service: -1 before the registration, 0 after it has been
 * taken back, so that it is taken back even when the registration had failed. */
extern int gVeskHandler;

/* Deletes an object and clears the handle to it; a null handle is left alone. */
void delete_object(Evas_Object *&object);

/* The same for a popup on the screen, which is hidden first. */
void remove_popup(Evas_Object *&popup);
