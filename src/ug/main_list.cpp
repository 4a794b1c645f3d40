#include "ug/main_list.h"

#include "log.h"
#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/edit_state.h"
#include "ug/layout.h"
#include "ug/rows.h"
#include "ug/screen_reader.h"
#include "ug/sizing.h"
#include "ug/watches.h"
#include "vesk/device_table.h"

Evas_Object *add_main_list(Evas_Object *parent)
{
    Evas_Object *list = elm_genlist_add(parent);
    expand_and_fill(list);
    elm_object_scroll_item_loop_enabled_set(list, EINA_TRUE);
    return list;
}

void set_main_list_content(AppData *app)
{
    Evas_Object *wrapper = widget_min_set(app->genlist, app->base, scaled(kListWidth), scaled(kListHeight), true);
    expand_down_and_fill(wrapper);
    evas_object_show(wrapper);
    elm_object_content_set(app->base, wrapper);
}

void create_genlist(AppData *app, int count)
{
    LOG_I("Enter");
    Elm_Genlist_Item_Class *row_class = new_row_class(_item_content_get);
    if (!row_class)
        return;
    append_device_rows(app, row_class, count, _create_popup);
    elm_genlist_select_mode_set(app->genlist, ELM_OBJECT_SELECT_MODE_ALWAYS);
    evas_object_focus_set(app->genlist, EINA_TRUE);
    Elm_Object_Item *first = elm_genlist_first_item_get(app->genlist);
    /* At error level on purpose, with its line end: test harnesses wait for it. */
    LOG_E("first_item[%p]\n", static_cast<void *>(first));
    if (first)
        elm_object_item_focus_set(first, EINA_TRUE);
    evas_object_show(app->genlist);
    elm_genlist_item_class_free(row_class);
    LOG_I("Exit");
}

/* The row's check box follows the mark for deletion; outside edit mode a row has no check box. */
static void show_mark(Elm_Object_Item *item, int row)
{
    Evas_Object *check = check_of_item(item);
    LOG_I("Item Index = [%d], status = [%d], count = [%d]", row, b_remove_status[row], device_count);
    if (!check) {
        LOG_I("Check box is null");
        return;
    }
    elm_check_state_set(check, b_remove_status[row]);
    LOG_I("Item Index [%d] [%p]", row, static_cast<void *>(check));
}

void genlistRealizedCb(void * /*data*/, Evas_Object * /*obj*/, void *event_info)
{
    Elm_Object_Item *item = static_cast<Elm_Object_Item *>(event_info);
    if (!item)
        return;
    LOG_I("Enter");
    elm_object_item_signal_emit(item, "theme,singleline,icon,2text", "");
    if (elm_genlist_item_select_mode_get(item) != ELM_OBJECT_SELECT_MODE_ALWAYS) {
        LOG_I(" Item [%p]", static_cast<void *>(item));
        elm_genlist_item_select_mode_set(item, ELM_OBJECT_SELECT_MODE_ALWAYS);
    }
    const int row = row_of_item(item);
    if (row < 0) {
        LOG_W("elm_genlist_item_index_get Failed");
        return;
    }
    show_mark(item, row);
    set_row_reader(item, _list_reader);
    LOG_I("Exit");
}

void refresh_genlist(AppData *app)
{
    b_popup_expanded = false;
    LOG_I("Enter");
    /* The old list goes when the new content takes its place in the popup. */
    elm_genlist_clear(app->genlist);
    app->genlist = add_main_list(app->base);
    vesk_get_table(&app->table);
    b_edit_status = false;
    elm_genlist_select_mode_set(app->genlist, ELM_OBJECT_SELECT_MODE_ALWAYS);

    if (device_count != 0) {
        create_genlist(app, device_count);
        set_main_list_content(app);
        evas_object_smart_callback_add(app->genlist, "realized", genlistRealizedCb, app);
    } else {
        elm_win_focus_highlight_enabled_set(app->win, EINA_TRUE);
        destroy_ug(app);
    }
    LOG_I("Exit");
}
