#pragma once
/* The minimum size of a list inside its popup. */

#include <Elementary.h>

/* Wraps `content` in a new one-cell table on `parent` that is at least `width` x `height` pixels at the base scale.
 * The callers have scaled these sizes already and they are scaled once more here, which is the size that is wanted.
 * The sizing rectangle is stored in the record's list_rect for the main list, in action_rect otherwise. The parent
 * owns the table. */
Evas_Object *widget_min_set(Evas_Object *content, Evas_Object *parent, int width, int height, bool is_main);
