#pragma once
/* Pictures of the kinds of devices. */

#include <Elementary.h>

/* Loads the picture of a device of this type and icon code into `image`; nothing else of the object changes. An input
 * device with an unknown icon code has no picture, and a file that is missing leaves the image empty. */
void _load_device_icon(Evas_Object *image, int32_t type, int32_t icon_code);
