#pragma once
/* Where popups lie on the panel. */

#include <Elementary.h>

namespace vesk::efl {

class Widgets;

class Places {
public:
    explicit Places(const Widgets &widgets);

    /* Moves the topmost popup when what it shows lies outside the panel. */
    void keep_on_panel();

private:
    struct Point {
        int x = 0;
        int y = 0;
        bool operator==(const Point &) const = default;
    };

    /* The popup that was placed last: where the module wants it, which holds for every form of the panel; where it was
       put; and the sizes of both then. */
    struct Placed {
        const Evas_Object *popup = nullptr;
        Point wanted;
        Point put;
        int width = 0;
        int height = 0;
        int panel_width = 0;
    };

    void remember(Evas_Object *popup, const Placed &placed);

    const Widgets &widgets_;
    int list_middle_;   /* of the wide panel, which the numbers mirror at */
    int content_inset_; /* of the list within the drop-down, in the theme's design pixels */
    Placed last_;
};

/* Measures an object and everything within it again. */
void lay_out_again(Evas_Object *object);

} // namespace vesk::efl
