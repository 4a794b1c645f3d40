#pragma once
/* Rows that a key leads to. */

#include <Elementary.h>

namespace vesk::efl {

/* Gives every row that the focus has been moved to its place before the next frame would. */
void place_rows(Evas *canvas);

} // namespace vesk::efl
