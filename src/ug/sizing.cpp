#include "ug/sizing.h"

#include "log.h"
#include "ug/app_data.h"
#include "ug/layout.h"
#include "ug/orientation.h"

Evas_Object *widget_min_set(Evas_Object *content, Evas_Object *parent, int width, int height, bool is_main)
{
    if (b_is_tablo && is_portrait_mode()) {
        width = compact(width);
        height = compact(height);
    }
    LOG_I("Enter");
    Evas_Object *table = elm_table_add(parent);
    Evas_Object *rect = evas_object_rectangle_add(evas_object_evas_get(table));
    evas_object_size_hint_min_set(rect, scaled(width), scaled(height));
    expand_and_fill(rect);
    elm_table_pack(table, rect, 0, 0, 1, 1);
    if (is_main) {
        evas_object_color_set(rect, 0, 0, 0, 10);
        evas_object_show(rect);
    }
    if (!app_data)
        LOG_W("no screen to store the rectangle in");
    else if (is_main)
        app_data->list_rect = rect;
    else
        app_data->action_rect = rect;

    expand_and_fill(content);
    elm_table_pack(table, content, 0, 0, 1, 1);
    LOG_I("Exit");
    return table;
}
