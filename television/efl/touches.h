#pragma once
/* Touches while the focus is forbidden to everything. */

#include <Elementary.h>
#include <vector>

namespace vesk::efl {

class Widgets;

class Touches {
public:
    explicit Touches(const Widgets &widgets) : widgets_(widgets) {}
    ~Touches();
    Touches(const Touches &) = delete;
    Touches &operator=(const Touches &) = delete;

    /* Holds touches from lists and buttons while nothing on the screen may be focused, and lets them through again. */
    void keep();

private:
    const Widgets &widgets_;
    std::vector<Evas_Object *> shields_; /* unseen, over what is not to be touched */
};

} // namespace vesk::efl
