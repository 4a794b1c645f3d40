#pragma once
/* Sizes that come out wrong. */

namespace vesk::efl {

/* Lists are as large as their scale makes them, once. */
void scale_lists_once();

/* Popups are as high as the buttons that they still have. */
void fit_popups();

} // namespace vesk::efl
