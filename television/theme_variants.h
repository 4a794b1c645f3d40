#pragma once
/* The variants of the theme: its classes of colours and sizes "NAME" have others beside them, "NAME/VARIANT", whose
   values the host puts in the place of the first (see theme/CONTRACT.md). */

namespace vesk {

/* What the panel looks like: 1920 x 1080; 1080 x 1920; or that with everything on it at nine sixteenths. */
enum class Form { wide, tall, compact };

/* Sizes for that form of the panel, on everything that is shown and everything that will be. */
void show_form(Form form);

/* Colours for high contrast, or the usual ones, likewise. */
void show_contrast(bool high);

} // namespace vesk
