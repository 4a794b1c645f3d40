#pragma once
/* Which widgets there are on the panel, and what keys may do with them. */

#include <Elementary.h>
#include <vector>

namespace vesk::efl {

bool is_list(const Evas_Object *object);

/* The popup that lies over everything else, or else the window: keys go nowhere else. */
Evas_Object *scope();

/* Whether `object` is `ancestor` or lies within it. */
bool within(const Evas_Object *object, const Evas_Object *ancestor);

/* Whether `object` may have the focus now: shown, allowed, not disabled and within scope(). */
bool may_focus(const Evas_Object *object);

/* The lists on the panel. */
std::vector<Evas_Object *> lists();

/* What may have the focus now, in the order of its making. */
std::vector<Evas_Object *> focusable_widgets();

/* A row that keys can reach. */
bool row_may_focus(const Elm_Object_Item *row);

/* Widgets that the module has made. */
void popup_added(Evas_Object *popup);
void key_taker_added(Evas_Object *list_or_button);
void check_added(Evas_Object *check, const Evas_Object *parent);

/* Deletes what a gadget has left on the window. */
void clear_window();

/* The popups that are shown, the lowest first. */
std::vector<Evas_Object *> shown_popups();

} // namespace vesk::efl
