#pragma once
/* What can be told from the pixels of a place alone. */

#include <functional>

#include "picture.h"

namespace vesk::looks {

/* The colour that most pixels of a place have; black when the place is empty. */
Color common_color(const Picture &picture, const Rect &place);

/* The contrast between that colour and what stands out from it, a few single pixels aside. */
double contrast_in(const Picture &picture, const Rect &place);

/* How many pixels of a place have a contrast of at least `least` to `ground`. */
int standing_out(const Picture &picture, const Rect &place, Color ground, double least);

/* The smallest place that holds every pixel of `place` with a contrast of at least `least` to `ground`. */
Rect bounds_of(const Picture &picture, const Rect &place, Color ground, double least);

/* How much of a frame can be seen around `area`: at each of the four sides the part of its length along which
   `is_drawn(x, y)` holds for some pixel not deeper than `reach`; the least of the four, from 0 to 1. The ends of the
   sides do not count, since corners may be round. */
double frame_around(const Rect &area, int reach, const std::function<bool(int, int)> &is_drawn);

/* The brightness below which all but one in a thousand pixels of a place are, from 0 to 1; pixels of `without` do not
   count. */
double brightness_of(const Picture &picture, const Rect &place, const Rect &without);

} // namespace vesk::looks
