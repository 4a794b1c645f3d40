#pragma once
/* Pixel sizes and size hints of the screens. */

#include <Elementary.h>

/* Design size of the main list, in pixels at the application base scale. */
constexpr int kListWidth = 820;
constexpr int kListHeight = 491;

/* What sizes are multiplied by in the compact layout of a turned board: nine sixteenths. */
constexpr double kCompactFactor = 0.5625;

/* A design size in pixels of the current display: rounded to the nearest pixel for the sizes there are, which are
 * never negative. */
inline int scaled(double size)
{
    return static_cast<int>(size * elm_config_scale_get() / elm_app_base_scale_get() + 0.5);
}

/* A size in the compact layout, cut to whole pixels. */
inline int compact(int size)
{
    return static_cast<int>(size * kCompactFactor);
}

/* Size hints of an object that takes all the space it is given. */
inline void fill(Evas_Object *object)
{
    evas_object_size_hint_align_set(object, EVAS_HINT_FILL, EVAS_HINT_FILL);
}

inline void expand_and_fill(Evas_Object *object)
{
    evas_object_size_hint_weight_set(object, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    fill(object);
}

/* The same for a wrapper with a minimum width of its own, which grows downwards only. */
inline void expand_down_and_fill(Evas_Object *object)
{
    evas_object_size_hint_weight_set(object, 0.0, EVAS_HINT_EXPAND);
    fill(object);
}
