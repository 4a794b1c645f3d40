#pragma once
/* What lies on a panel's canvas, as a person in front of it would see it: texts, rows, buttons, pictures and the panels
   that they lie on, each with its place. */

#include <Evas.h>
#include <string>
#include <vector>

#include "picture.h"
#include "television/panel.h"

namespace vesk::looks {

/* A body of the theme on the canvas. */
struct Drawing {
    Evas_Object *object = nullptr;
    std::string group; /* its name in the theme */
    Rect area;
    Rect shown;      /* what is left of it after clipping */
    int ground = -1; /* index in Sight::grounds of the one that it lies on */
    int list = -1;   /* of a row: index in Sight::lists */

    /* What the toolkit knows of the row or button, however it looks. */
    bool focused = false;
    bool off = false;      /* cannot be chosen or pressed */
    bool selected = false; /* a row */

    /* The state of a part, empty when there is none of that name. */
    std::string state(const char *part) const;
    /* Where a part lies on the panel. */
    Rect part(const char *part) const;

    bool is_row() const { return group.starts_with("elm/genlist/item/"); }
    bool is_button() const { return group.starts_with("elm/button/base/"); }
};

/* A ground that hides what lies under it: a popup's, or the toast's. */
struct Ground {
    Drawing drawing;
    Rect area;
    int depth; /* place in the order of painting */
};

struct Text {
    std::string words;
    Drawing within;  /* the drawing that the text belongs to */
    Rect area;       /* of the letters */
    Rect shown;      /* what is left of it after clipping */
    bool cut;        /* ended by an ellipsis, or larger than its place */
    bool name;       /* a device's name, which may be too long */
    int ground = -1; /* index in Sight::grounds of the one that it lies on */
    bool covered;    /* wholly or partly under a later ground */
    bool title;      /* of a panel */
};

/* A device's or service's picture, or a button's icon. */
struct Drawn {
    std::string file;
    Drawing within; /* the row or button that it belongs to */
    Rect area;
    bool covered;
    bool loaded;
};

struct Check {
    Drawing within; /* the row that it belongs to */
    Rect area;
    bool on;
    bool covered;
};

struct List {
    Rect area;
    Rect bar;    /* of the scroll bar, empty without one */
    bool longer; /* has more than it can show */
    int ground;  /* index in Sight::grounds */
};

struct Sight {
    std::vector<Ground> grounds; /* in the order of painting */
    std::vector<Text> texts;
    std::vector<Drawing> rows;
    std::vector<Drawing> buttons;
    std::vector<Drawn> pictures;
    std::vector<Check> checks;
    std::vector<List> lists;
};

/* Looks at a panel that is at rest. */
Sight look_at(const Panel &panel);

} // namespace vesk::looks
