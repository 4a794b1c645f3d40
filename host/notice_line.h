#pragma once
/* The text at the panel's upper edge that shows the notices, above everything that a module shows. */

#include "notices.h"
#include "television/panel.h"
#include "vconf.h"

namespace vesk {

class NoticeLine {
public:
    /* Both have to last longer. */
    NoticeLine(Panel &panel, Notices &notices);
    ~NoticeLine();
    NoticeLine(const NoticeLine &) = delete;
    NoticeLine &operator=(const NoticeLine &) = delete;

private:
    static void window_resized(void *line, Evas *, Evas_Object *, void *);
    static void contrast_changed(keynode_t *, void *line);
    static void label_gone(void *line, Evas *, Evas_Object *, void *);
    void show_soon();
    void show();
    void lay_out() const;
    void take_away();

    Panel &panel_;
    Notices &notices_;
    Evas_Object *label_ = nullptr;
    Evas_Object *back_ = nullptr;
    Ecore_Job *soon_ = nullptr;
};

} // namespace vesk
