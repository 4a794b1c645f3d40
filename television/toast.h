#pragma once

#include <Elementary.h>

namespace vesk {

/* A message on the window that is shown for a time and goes by itself, or null. */
Evas_Object *shown_toast(const Evas_Object *window);

} // namespace vesk
