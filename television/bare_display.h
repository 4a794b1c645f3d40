#pragma once

#include <Elementary.h>

namespace vesk {

/* For a window that has not been shown yet. On an X display that no window manager looks after, nobody else lets it
   draw, places it or gives it the keyboard: it then fills the screen and takes the keyboard when it is shown. Returns
   whether that is so. */
bool stand_alone(Evas_Object *window);

} // namespace vesk
