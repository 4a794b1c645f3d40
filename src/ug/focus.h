#pragma once
/* Focus and dimming, which every screen moves in the same few ways. */

#include <Elementary.h>

struct AppData;

/* Gives an object the canvas focus and the widget focus, or takes both. */
void give_focus(Evas_Object *object);
void take_focus(Evas_Object *object);

/* Lets an object have the focus, shows the highlight and gives it the focus. */
void focus_object(Evas_Object *object);

/* Makes the main list the focused part of the main screen, looks included. */
void focus_list(AppData *app);

/* Makes a button look unavailable and closes it for the focus, and the reverse. */
void dim_button(Evas_Object *button);
void undim_button(Evas_Object *button);

/* Dims a popup (or window) behind another by `percent`, and lights the base popup up again. */
void dim_behind(Evas_Object *object, int percent);
void undim_base(AppData *app);

/* From the main list, the side on which the buttons stand in the order of reading. */
Elm_Focus_Direction towards_buttons();
/* From a button, the side on which the main list stands. */
Elm_Focus_Direction towards_list();

/* Sets the explicit focus chain of the main screen in normal mode: the buttons one above the other beside the list,
 * the edit button on top; up and down never leave the list. The toolkit sets the opposite direction of each link as
 * well, so the order of the links matters. */
void set_main_focus_chain(AppData *app);
