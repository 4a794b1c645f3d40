#pragma once
/* A popup stays dimmed as long as the popup that it was dimmed for lies over it. */

#include <Elementary.h>
#include <string>
#include <vector>

namespace vesk::efl {

class Widgets;

class Dimming {
public:
    explicit Dimming(const Widgets &widgets) : widgets_(widgets) {}

    void popup_added(Evas_Object *popup);

private:
    struct Dimmed {
        Evas_Object *popup;
        const Evas_Object *above; /* for which it was dimmed */
        std::string signal;
    };

    static void dimmed(void *popup, Evas_Object *, const char *signal, const char *);
    static void undimmed(void *popup, Evas_Object *, const char *, const char *);
    static void popup_gone(void *, Evas *, Evas_Object *popup, void *);
    void undim(Evas_Object *popup);

    const Widgets &widgets_;
    std::vector<Dimmed> dimmed_;
};

} // namespace vesk::efl
