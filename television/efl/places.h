#pragma once
/* Where popups lie on the panel. */

#include <Elementary.h>

namespace vesk::efl {

class Widgets;

class Places {
public:
    explicit Places(const Widgets &widgets);

    /* Brings the topmost popup that a module has placed beside its row, wholly onto the panel. */
    void keep_on_panel();

private:
    struct Point {
        int x = 0;
        int y = 0;
        bool operator==(const Point &) const = default;
    };

    /* The popup that was placed last, its own size when it does not fill the panel, and where its content lies from the
       row that it was opened from, at a scale of 1; and what was seen of it last. */
    struct Placed {
        const Evas_Object *popup = nullptr;
        int width = 0;
        int height = 0;
        bool beside_row = false;
        double right = 0;
        double down = 0;
        Eina_Rectangle panel{};
        Eina_Rectangle frame{};
        Eina_Rectangle content{};
        int turns = 0; /* of the main loop in which the row may still move */
    };

    Elm_Object_Item *row_below(const Evas_Object *popup) const;
    Eina_Rectangle row_area(const Evas_Object *popup) const;
    Point meant(const Eina_Rectangle &frame, const Eina_Rectangle &content, const Eina_Rectangle &row);
    Point magnified(bool whole) const;
    bool grow(Evas_Object *popup, const Eina_Rectangle &frame) const;
    Point on_panel(Point content, const Eina_Rectangle &size) const;
    void remember(Evas_Object *popup, const Placed &placed);
    void place(Evas_Object *popup, const Eina_Rectangle &frame, const Eina_Rectangle &content);
    bool rests(const Eina_Rectangle &frame, const Eina_Rectangle &content);
    void follow(Evas_Object *popup, const Eina_Rectangle &frame, const Eina_Rectangle &content) const;

    const Widgets &widgets_;
    int list_middle_;                   /* of the wide panel, which the numbers mirror at */
    int content_inset_;                 /* of the list within the drop-down, in the theme's design pixels */
    bool numbers_are_mirrored_ = false; /* once a module has met a right-to-left language it stays with it */
    Placed last_;
};

/* Measures an object and everything within it again. */
void lay_out_again(Evas_Object *object);

} // namespace vesk::efl
