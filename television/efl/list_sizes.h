#pragma once
/* The least sizes of lists. */

namespace vesk::efl {

/* Lists are as large as their scale makes them, once. */
void scale_lists_once();

} // namespace vesk::efl
