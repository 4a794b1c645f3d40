#pragma once
/* The orientation of the television's menu. */

/* 0 is landscape, any other value portrait. */
constexpr const char *kOrientationKey = "db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation";

/* True when the on-screen menu is set to portrait; a setting that cannot be read is logged and means landscape. */
bool is_portrait_mode();
