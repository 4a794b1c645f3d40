#pragma once
/* Where popups lie on the panel. */

#include <Elementary.h>

namespace vesk::efl {

/* Moves the topmost popup sideways when what it shows lies outside the panel. */
void keep_on_panel();

/* Measures an object and everything within it again. */
void lay_out_again(Evas_Object *object);

} // namespace vesk::efl
