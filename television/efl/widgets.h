#pragma once
/* Which widgets there are on the panel, and what keys may do with them. */

#include <Elementary.h>
#include <vector>

namespace vesk::efl {

bool is_list(const Evas_Object *object);

/* Whether it is a single drawing, which holds no other objects. */
bool is_plain(const Evas_Object *object);

/* Whether `object` is `ancestor` or lies within it. */
bool within(const Evas_Object *object, const Evas_Object *ancestor);

/* A row that keys can reach. */
bool row_may_focus(const Elm_Object_Item *row);

class Widgets {
public:
    explicit Widgets(Evas_Object *window) : window_(window) {}

    Evas_Object *window() const { return window_; }

    /* The popup that lies over everything else, or else the window: keys go nowhere else. */
    Evas_Object *scope() const;

    /* Whether `object` may have the focus now: shown, allowed, not disabled and within scope(). */
    bool may_focus(const Evas_Object *object) const;

    /* The lists on the panel. */
    std::vector<Evas_Object *> lists() const;

    /* What may have the focus now, in the order of its making. */
    std::vector<Evas_Object *> focusable() const;

    /* Everything that may ever have it, in the order of its making. */
    const std::vector<Evas_Object *> &key_takers() const { return key_takers_; }

    /* Whether `object` lies in a popup below scope(). */
    bool lies_below(const Evas_Object *object) const;

    /* The popups that are shown, the lowest first. */
    std::vector<Evas_Object *> shown_popups() const;

    /* Both are left out again when they are gone. */
    void add_popup(Evas_Object *popup);
    void add_key_taker(Evas_Object *list_or_button);
    void forget_key_taker(const Evas_Object *list_or_button);

    /* Deletes what a gadget has left on the window. */
    void clear_window() const;

private:
    Evas_Object *window_;
    /* Both in the order of their making. */
    std::vector<Evas_Object *> popups_;
    std::vector<Evas_Object *> key_takers_;
};

} // namespace vesk::efl
