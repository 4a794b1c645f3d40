#pragma once
/* The television's settings that the screens follow: orientation, menu language, high contrast. */

#include <Evas.h>
#include <vconf.h>

/* 0 is landscape, any other value portrait. */
constexpr const char *kOrientationKey = "db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation";

/* The layout runs right to left. Set when an action drop-down opens in such a language and never cleared while the
 * module is loaded, so the first screen is built left to right in any language; the other screens follow that order. */
extern bool gbReverse;

/* Change callback of the orientation: gives what is open the sizes and places of the turned screen. Its arguments are
 * not used. */
void VconfNotifyCB(keynode_t *node, void *user_data);

/* Sets gbReverse when the menu language is written right to left. */
void IsReveseOSD();

/* Tells the popup's theme whether the user wants high contrast; says nothing when the setting cannot be read. */
void _set_bg_contrast(Evas_Object *popup);
