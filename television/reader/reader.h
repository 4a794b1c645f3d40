#pragma once
/* The screen reader: speaks what has the focus, and what the module says by itself.
 *
 * The toolkit's own access mode stays off, since its access objects would take the arrows, and a focus move by key is
 * not read in it. Instead the module is told that the reader is on, it gets an object of this reader for each row, and
 * the callbacks that it sets are remembered and asked when the focus comes to rest. interpose.cpp passes the calls on.
 */

#include <Elementary.h>
#include <functional>
#include <string>

namespace vesk::reader {

/* Says one text; `interrupt`: at once, instead of what is being said or waits. */
using Voice = std::function<void(const std::string &text, bool interrupt)>;

/* Reads with that voice what happens on the panel, until end(). To be called before a module is started. */
void begin(Voice voice);
void end();
bool is_on();

/* A key or a touch: what was being said has become old. */
void key_came();

/* The focus on `window` is where it has to be: the widget or row that has it is read soon, once for each move. */
void focus_rests(Evas_Object *window);

/* Hears every text that the module says at once, whether the reader is on or not; null ends that. For tests. */
void set_listener(std::function<void(const std::string &text)> listener);

/* The module's calls. */
void say(const char *text);
void set_callback(Evas_Object *object, Elm_Access_Info_Cb callback, const void *data);
Evas_Object *object_of_row(Elm_Object_Item *row);

} // namespace vesk::reader
