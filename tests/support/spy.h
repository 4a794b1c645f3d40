#pragma once
/* What the module asks of the toolkit and of the platform. The functions of spy_functions.cpp stand before the others'
 * own and pass the calls on. What the television and the toolkit itself ask comes by too, so look for the object that
 * is meant.
 *
 * There is one journal, of calls and of the module's log lines in their order, and one set of overrides. ScreenTest
 * begins each test with both empty. */

#include <Elementary.h>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace spy {

struct Call {
    std::string function; /* its name; empty for a line of the log */
    const void *on;       /* the object or row that it is about, or null */
    std::string text;     /* as a line: "focus 1 on list", "theme,undim from  to base" */
    std::vector<double> numbers = {};
    const void *other = nullptr; /* a second object, or a callback */
};

const std::vector<Call> &journal();
void forget();

/* What the functions of spy_functions.cpp write. */
void note(Call call);

/* A line of the module's log, as "I refresh_genlist: Enter". */
void note_line(const std::string &line);

/* The calls of one function, and those about one object. */
std::vector<Call> calls_of(std::string_view function);
std::vector<Call> calls_of(std::string_view function, const void *on);

/* The texts of the log's lines and of the calls of these functions, in their order. */
std::vector<std::string> steps(std::initializer_list<std::string_view> functions);

/* The same for what is to be seen of a screen and of its life: highlight, signals, alignment, scale, product, window.
 */
std::vector<std::string> screen_steps();

/* The signals to an object or a row, as "emission|source", and those to a row that choose the layout of its theme. */
std::vector<std::string> signals_to(const void *object);
std::vector<std::string> layouts_of(const Elm_Object_Item *item);

/* A link of the explicit focus chain. */
struct Link {
    const Evas_Object *from;
    Elm_Focus_Direction direction;
    const Evas_Object *to;
    bool operator==(const Link &) const = default;
};
std::ostream &operator<<(std::ostream &out, const Link &link);
std::vector<Link> links();

/* The chain of the main screen outside edit mode: buttons one above the other beside the list, on its left when the
 * language is written from right to left. */
std::vector<Link> main_chain(const Evas_Object *list, const Evas_Object *first, const Evas_Object *second,
                             bool reverse);

struct Timer {
    double seconds;
    Ecore_Task_Cb callback;
    const void *data;
    bool operator==(const Timer &) const = default;
};
std::vector<Timer> timers();

/* What the toolkit and the catalogue are to answer instead of what they would. */
struct Overrides {
    bool no_row_classes = false;
    bool no_indexes = false;                                 /* rows have no place in their list */
    int no_row = -1;                                         /* there is no row with this number, from 0 */
    Evas_Object *row_area = nullptr;                         /* stands for the area of every row */
    std::map<std::string, std::string> texts;                /* by string id, in place of the language's own */
    std::function<void(Elm_Genlist_Item_Class &)> on_append; /* sees the class of each row that is appended */
};
Overrides &overrides();

/* Empties the journal and ends all overrides. */
void reset();

} // namespace spy
