#include "ug/turn.h"

#include <Elementary.h>

#include "log.h"
#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/detail_popup.h"
#include "ug/edit_state.h"
#include "ug/layout.h"
#include "ug/orientation.h"
#include "ug/platform_facts.h"

/* Places the drop-down beside row n of the main list, counted from 1. The portrait formula divides by the screen's
 * width on purpose: the vertical extent of a turned panel is the panel's width. */
static void align_action_popup(AppData *app, bool portrait)
{
    Elm_Object_Item *selected = elm_genlist_selected_item_get(app->genlist);
    if (!selected) {
        LOG_W("no row is selected");
        return;
    }
    const int n = elm_genlist_item_index_get(selected);
    int width = 0;
    int height = 0;
    get_system_info_int("com.corvane/feature/screen.width", &width);
    get_system_info_int("com.corvane/feature/screen.height", &height);
    const int extent = portrait ? width : height;
    if (extent == 0) {
        LOG_W("screen size is unknown");
        return;
    }
    const double vertical = portrait ? ((n + 1) * 45 + 813) / static_cast<double>(extent) - 0.013
                                     : ((n + 1) * 80 + 268) / static_cast<double>(extent) - 0.03;
    if (app->action_popup)
        elm_popup_align_set(app->action_popup, 0.5, vertical);
}

static void turn_action_popup(AppData *app, bool portrait)
{
    const int width = portrait ? compact(scaled(250)) : scaled(250);
    const int height = portrait ? 156 : 279;
    evas_object_size_hint_min_set(app->action_rect, scaled(width), scaled(height));
    align_action_popup(app, portrait);
    if (app->action_popup)
        evas_object_show(app->action_popup);
}

void VconfNotifyCB(keynode_t * /*node*/, void * /*user_data*/)
{
    LOG_I("ROTATION callback");
    g_checkbox_index = 0;
    g_orientation_checkbox_count = 0;
    AppData *app = app_data;
    if (!app || !app->base) {
        LOG_W("no screen to turn");
        return;
    }

    const bool portrait = is_portrait_mode();
    const int width = portrait ? compact(scaled(kListWidth)) : scaled(kListWidth);
    const int height = portrait ? compact(scaled(kListHeight)) : scaled(kListHeight);
    /* Scaled twice, like the sizes that widget_min_set is given. */
    evas_object_size_hint_min_set(app->list_rect, scaled(width), scaled(height));

    if (b_popup_expanded)
        turn_action_popup(app, portrait);
    if (b_edit_status) {
        elm_object_disabled_set(app->close_button, g_selected_count == 0);
        elm_object_focus_allow_set(app->close_button, g_selected_count != 0);
    }
    if (app->detail_popup) {
        delete_object(app->detail_popup);
        show_detail_popup(app);
    }
}
