#include "ug/device_list_screen.h"

#include <cstdio>
#include <cstring>
#include <vconf.h>

#include "log.h"
#include "translate.h"
#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/app_keys.h"
#include "ug/buttons.h"
#include "ug/edit_mode.h"
#include "ug/focus.h"
#include "ug/layout.h"
#include "ug/markup.h"
#include "ug/rows.h"
#include "ug/screen_reader.h"
#include "ug/settings_watch.h"
#include "vesk/device_table.h"

bool is_portrait_mode()
{
    int orientation = 0;
    if (vconf_get_int(kOrientationKey, &orientation) != 0) {
        LOG_E("error vconf_get_int : %d", orientation);
        return false;
    }
    return orientation != 0;
}

Evas_Object *add_main_list(Evas_Object *parent)
{
    Evas_Object *list = elm_genlist_add(parent);
    expand_and_fill(list);
    elm_object_scroll_item_loop_enabled_set(list, EINA_TRUE);
    return list;
}

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

void set_main_list_content(AppData *app)
{
    Evas_Object *wrapper = widget_min_set(app->genlist, app->base, scaled(kListWidth), scaled(kListHeight), true);
    expand_down_and_fill(wrapper);
    evas_object_show(wrapper);
    elm_object_content_set(app->base, wrapper);
}

static void add_buttons(AppData *app)
{
    app->close_button = add_popup_button(app->base, "button2", translated("COM_SID_CLOSE"), _closebutton_cb, app);
    app->close_icon = add_board_icon(app->close_button, "i_close_cancel");

    /* On a board the edit button works only while there is something to edit. */
    const bool works = !b_is_tablo || device_count != 0;
    app->edit_button =
        add_popup_button(app->base, "button1", translated("COM_SID_EDIT"), works ? _editbutton_cb : nullptr, app);
    app->edit_icon = add_board_icon(app->edit_button, "i_edit");
}

static void show_device_list(AppData *app)
{
    create_genlist(app, device_count);
    set_main_list_content(app);
    focus_object(app->genlist);
    set_main_focus_chain(app);
}

static void show_no_device(AppData *app)
{
    char text[300];
    /* The closing tag is written this way on purpose: the television's themes expect it. */
    snprintf(text, sizeof text, "<align=center><font=CorvaneSans_400:style=Regular font_size=34>%s</font/></align>",
             translated("SID_NO_EQUIPMENT_STORED_MSG"));
    Evas_Object *label = elm_label_add(app->base);
    expand_and_fill(label);
    elm_object_text_set(label, text);
    elm_object_style_set(label, "C_TextItem_WhiteSingleline01");
    elm_object_focus_allow_set(label, EINA_FALSE);
    evas_object_show(label);
    app->noitem_label = label;
    elm_object_content_set(app->base, label);

    elm_access_info_cb_set(app->close_button, ELM_ACCESS_INFO, _noitem_screen_reader, nullptr);
    elm_object_signal_emit(app->close_button, "elm,state,focused", "elm");
    focus_object(app->close_button);
    dim_button(app->edit_button);
    LOG_I("[VESKAUTOTC][DELETEALL]");
}

void _create_c_popup_right(AppData *app)
{
    LOG_I("Enter");
    Evas_Object *popup = app->base;
    elm_popup_orient_set(popup, ELM_POPUP_ORIENT_CENTER);
    elm_object_style_set(popup, "C_PopupBasic_WhiteRight");
    elm_object_part_text_set(popup, "title,text", translated("COM_SID_DEVICE_LIST_KR_LIST"));

    app->genlist = add_main_list(popup);
    vesk_get_table(&app->table);
    app_data = app;
    add_buttons(app);
    if (device_count != 0)
        show_device_list(app);
    else
        show_no_device(app);

    evas_object_smart_callback_add(app->genlist, "realized", genlistRealizedCb, app);
    if (b_is_tablo)
        evas_object_smart_callback_add(popup, "block,clicked", Clicked_outside_app_cb, app);
    evas_object_show(popup);
    LOG_I("Exit");
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

char *_item_label_get(void *data, Evas_Object * /*obj*/, const char *part)
{
    char text[256] = "";
    const DeviceEntry *entry = static_cast<const DeviceEntry *>(data);
    if (entry && strcmp(part, "elm.text") == 0) {
        /* The marks let a name keep its own direction inside a right-to-left layout. */
        snprintf(text, sizeof text, "&#x200e;%s&#x200e;", entry->name[0] != '\0' ? entry->name : "UNKNOWN");
    } else if (entry && strcmp(part, "elm.text.1") == 0) {
        snprintf(text, sizeof text, "%s",
                 entry->state & kStateAllowed ? translated("COM_SID_ALLOWED") : translated("COM_SID_DENIED_KR_DENY"));
    }
    return new_text(text);
}

Evas_Object *_item_content_get(void *data, Evas_Object *obj, const char *part)
{
    refresh_table();
    return strcmp(part, "elm.swallow.icon") == 0 ? add_device_icon(obj, data) : nullptr;
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
