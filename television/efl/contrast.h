#pragma once
/* High contrast, as the setting says. */

#include <Elementary.h>

namespace vesk::efl {

/* Shows the theme's colours for high contrast whenever the setting says so, until end_contrast(). */
void begin_contrast();
void end_contrast();

} // namespace vesk::efl
