#pragma once
/* What is drawn anew. */

#include <Elementary.h>

namespace vesk::efl {

/* Lets an off-screen canvas draw what has changed instead of all. */
void draw_changes_only(Evas *canvas);

} // namespace vesk::efl
