#pragma once
/* The main screen: the list of registered devices, or a text when there is none, and two buttons. */

#include <Elementary.h>

#include "ug/main_list.h"
#include "ug/orientation.h"
#include "ug/rows.h"
#include "ug/sizing.h"

struct AppData;

/* Builds the screen into app->base and stores `app` in app_data. */
void _create_c_popup_right(AppData *app);
