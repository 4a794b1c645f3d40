#pragma once
/* Something that may have the focus always has it, and gets the keys. */

#include <Elementary.h>

namespace vesk::efl {

/* Does the next step that brings the focus to where it has to be. Returns whether it is there; what the toolkit keeps
   refusing is given up until something is asked for. The main loop does so by itself whenever it has run dry. */
bool keep_focus();

/* All the steps at once, as many as it makes sense to try. */
void bring_focus();

/* Lets the row with the focus look so in the list that has it, and in no other. */
void show_focus();

/* A row of `list` has a look of its own now, which is as the toolkit made it. */
void row_realized(Evas_Object *list);

/* What the module asks for; the toolkit may not be able to do it yet. */
void focus_asked(Evas_Object *object, bool focus);
void row_asked(Elm_Object_Item *row, bool focus);

/* A popup has been deleted. */
void popup_gone();

/* `object` may not have the focus any more. */
void focus_forbidden(Evas_Object *object);

} // namespace vesk::efl
