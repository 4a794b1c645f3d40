#pragma once
/* What the toolkit leaves undone on a television, mended from the host's side.
 *
 * The rooms: bends_keys.cpp (arrows), bends_focus.cpp (something always has the focus), bends_widgets.cpp (which
 * widgets there are, and what they may do), bends_places.cpp (popups on the panel), bends_contrast.cpp (high contrast),
 * bends_redraw.cpp (what is drawn anew). Nothing here knows a module: what is done follows from the kinds of widgets,
 * from their focus chain and from what the module asked the toolkit for, which interpose.cpp passes on to here. */

#include <string>
#include <vector>

#include <Elementary.h>

namespace vesk::bends {

/* Mends what happens on `window` until end(). */
void begin(Evas_Object *window);
void end();

/* The window of begin(); null outside. */
Evas_Object *window();

/* --- Keys (bends_keys.cpp) --- */

/* Whether the toolkit must keep its hands off this key: arrows are moved by move(), and with nothing on the screen
   that may be focused every key is only heard, never obeyed. Called before the key is given to the canvas. */
bool holds(const std::string &key);

/* Moves the focus as the arrow `key` says; other keys do nothing. Called after the key was given to the canvas. */
void move(const std::string &key);

/* --- Focus (bends_focus.cpp) --- */

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

/* --- Widgets (bends_widgets.cpp) --- */

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

/* --- Places (bends_places.cpp) --- */

/* Moves the topmost popup sideways when what it shows lies outside the panel. */
void keep_on_panel();

/* --- High contrast (bends_contrast.cpp) --- */

/* Shows the theme's colours for high contrast whenever the setting says so, until end_contrast(). */
void begin_contrast();
void end_contrast();

/* Measures an object and everything within it again. */
void lay_out_again(Evas_Object *object);

/* The popups that are shown, the lowest first. */
std::vector<Evas_Object *> shown_popups();

/* --- Drawing (bends_redraw.cpp) --- */

/* Lets an off-screen canvas draw what has changed instead of all. */
void draw_changes_only(Evas *canvas);

} // namespace vesk::bends
