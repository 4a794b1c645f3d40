#pragma once
/* Something that may have the focus always has it, and gets the keys. */

#include <Elementary.h>

namespace vesk::efl {

class Widgets;

class Focus {
public:
    explicit Focus(const Widgets &widgets) : widgets_(widgets) {}

    /* Does the next step that brings the focus to where it has to be. Returns whether it is there; what the toolkit
       keeps refusing is given up until something is asked for. Called whenever the main loop has run dry. */
    bool keep();

    /* All the steps at once, as many as it makes sense to try. */
    void bring();

    /* Lets the row with the focus look so in the list that has it, and in no other. */
    void show() const;

    /* A row of `list` has a look of its own now, which is as the toolkit made it. */
    void row_realized(Evas_Object *list);

    /* What the module asks for; the toolkit may not be able to do it yet. Both return whether the toolkit may try. */
    bool asked(Evas_Object *object, bool focus);
    bool row_asked(Elm_Object_Item *row, bool focus);

    /* Whether the keys may go to `object`. */
    bool keys_asked(const Evas_Object *object) const;

    /* A popup has been deleted. */
    void popup_gone();

    /* `object` may not have the focus any more. */
    static void forbidden(Evas_Object *object);

private:
    void set_wish(Evas_Object *object);
    static void forget_wish(void *, Evas *, Evas_Object *object, void *);
    void give(Evas_Object *widget);
    void give_keys(Evas_Object *widget);
    void hear_keys();
    bool takes_keys(const Evas_Object *widget) const;
    Evas_Object *place_for_focus() const;
    Evas_Object *wished_widget() const;
    bool pursue_wish(const Evas_Object *focused);

    const Widgets &widgets_;
    Evas_Object *wish_ = nullptr; /* the module's last that the toolkit has not been seen to fulfil */
    bool moving_ = false;         /* while the focus is moved from here, which is nobody's wish */
    int tries_ = 0; /* in a row that changed nothing: what the toolkit refuses is not asked for for ever */
};

} // namespace vesk::efl
