#pragma once
/* Sizes that come out wrong. */

namespace vesk::efl {

class Widgets;

/* Lists are as large as their scale makes them, once. */
void scale_lists_once(const Widgets &widgets);

/* Popups are as high as the buttons that they still have. */
void fit_popups(const Widgets &widgets);

} // namespace vesk::efl
