#pragma once
/* The variants of the theme: its classes of colours and sizes "NAME" have others beside them, "NAME/VARIANT", whose
   values the host puts in the place of the first; and the numbers that it tells the host (see theme/CONTRACT.md). */

namespace vesk {

/* What the panel looks like: 1920 x 1080; 1080 x 1920; or that with everything on it at nine sixteenths. */
enum class Form { wide, tall, compact };

/* Nine sixteenths: the scale of everything on a compact panel. */
constexpr double kCompactScale = 0.5625;

/* Sizes for that form of the panel, on everything that is shown and everything that will be. */
void show_form(Form form);

/* Colours for high contrast, or the usual ones, likewise. */
void show_contrast(bool high);

/* The theme's data item `name`; 0 when it is missing or is no number. */
int theme_number(const char *name);

} // namespace vesk
