#pragma once
/* What the toolkit leaves undone on a television, mended from the host's side: one source for each gap.
 *
 * Nothing here knows a module: what is done follows from the kinds of widgets, from their focus chain, from what the
 * theme says about its sizes and from what the module asked the toolkit for, which interpose.cpp passes on. */

#include <Elementary.h>

#include "television/efl/arrows.h"
#include "television/efl/contrast.h"
#include "television/efl/dimming.h"
#include "television/efl/focus.h"
#include "television/efl/places.h"
#include "television/efl/touches.h"
#include "television/efl/widgets.h"

namespace vesk::efl {

/* All state of the mending; a panel owns one. */
class Mending {
public:
    /* Mends what happens on `window`, which lives longer. One at a time. */
    explicit Mending(Evas_Object *window);
    ~Mending();
    Mending(const Mending &) = delete;
    Mending &operator=(const Mending &) = delete;

    /* The present panel's, or null. For the functions that stand before the toolkit's, which have no context, and for
       callbacks of widgets, which outlive their panel's mending by a few turns of the main loop. */
    static Mending *current();

    /* Widgets that the module has made. */
    void popup_added(Evas_Object *popup);
    void key_taker_added(Evas_Object *list_or_button);
    void check_added(Evas_Object *check, const Evas_Object *parent);
    void key_taker_gone(const Evas_Object *list_or_button);

    Widgets widgets;
    Focus focus{widgets};
    Arrows arrows{widgets, focus};
    Places places{widgets};
    Dimming dimming{widgets};
    Touches touches{widgets};

private:
    void before_rest();

    Contrast contrast_;
    Ecore_Idle_Enterer *watch_ = nullptr;
};

} // namespace vesk::efl
