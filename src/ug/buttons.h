#pragma once
/* Buttons of the popups. */

#include <Elementary.h>

struct AppData;

/* Adds a button to the popup's part `part`; `clicked` (null for none) is called with `app`. The popup owns it. */
Evas_Object *add_popup_button(Evas_Object *popup, const char *part, const char *text, Evas_Smart_Cb clicked,
                              AppData *app);

/* Gives a button its icon on an interactive board, from the toolkit's standard icons; null on other products. */
Evas_Object *add_board_icon(Evas_Object *button, const char *name);

/* Changes a board button's icon; `icon` is null on other products. */
void set_button_icon(Evas_Object *icon, const char *name);

/* Gives the main screen's two buttons the texts and icons of normal mode. */
void show_normal_buttons(AppData *app);
