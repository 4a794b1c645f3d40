#pragma once
/* The television's settings that the screens follow: orientation, menu language, high contrast. */

#include <Evas.h>

#include "ug/direction.h"
#include "ug/orientation.h"
#include "ug/turn.h"

/* Tells the popup's theme whether the user wants high contrast; says nothing when the setting cannot be read. */
void _set_bg_contrast(Evas_Object *popup);
