#pragma once
/* What the toolkit leaves undone on a television, mended from the host's side: one source for each gap.
 *
 * Nothing here knows a module: what is done follows from the kinds of widgets, from their focus chain and from what the
 * module asked the toolkit for, which interpose.cpp passes on. */

#include <Elementary.h>

namespace vesk::efl {

/* Mends what happens on `window` until end(). */
void begin(Evas_Object *window);
void end();

/* The window of begin(); null outside. */
Evas_Object *window();

} // namespace vesk::efl
