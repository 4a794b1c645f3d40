#pragma once
/* Touches while the focus is forbidden to everything. */

#include <Elementary.h>
#include <vector>

namespace vesk::efl {

class Widgets;

class Touches {
public:
    explicit Touches(const Widgets &widgets) : widgets_(widgets) {}

    /* Holds touches from lists and buttons while nothing on the screen may be focused, and lets them through again. */
    void keep();

    /* `widget` is gone. */
    void forget(const Evas_Object *widget) { std::erase(held_, widget); }

private:
    const Widgets &widgets_;
    std::vector<Evas_Object *> held_;
};

} // namespace vesk::efl
