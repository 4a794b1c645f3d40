#pragma once
/* The variants of the theme: its classes of colours, sizes and texts "NAME" have others beside them, "NAME/VARIANT",
   whose values the host puts in the place of the first; and the numbers that it tells the host (see
   theme/CONTRACT.md). */

#include <string>

namespace vesk {

/* What the panel looks like: 1920 x 1080; 1080 x 1920; or that with everything on it at nine sixteenths. */
enum class Form { wide, tall, compact };

/* Nine sixteenths: the scale of everything on a compact panel. */
constexpr double kCompactScale = 0.5625;

/* The magnifications that every screen has space for on the wide panel. */
constexpr double kLeastScale = 0.5;
constexpr double kGreatestScale = 1.5;

/* `scale`, or the greatest one that fits a panel of that form. */
double fitting_scale(Form form, double scale);

/* Sizes for that form of the panel and that magnification, on everything that is shown and everything that will be. */
void show_form(Form form, double scale);

/* The magnification of show_form(). */
double shown_scale();

/* Where the middle of the main list is, in pixels from the panel's left edge. */
int list_middle();

/* The space above and below texts that the script of a language needs, likewise. */
void show_script(const std::string &language);

/* Colours for high contrast, or the usual ones, likewise. */
void show_contrast(bool high);

/* The theme's data item `name`; 0 when it is missing or is no number. */
int theme_number(const char *name);

} // namespace vesk
