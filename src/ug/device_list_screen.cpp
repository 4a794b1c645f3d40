#include "ug/device_list_screen.h"

#include <cstdio>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/buttons.h"
#include "ug/edit_mode.h"
#include "ug/focus.h"
#include "ug/layout.h"
#include "ug/main_list.h"
#include "ug/screen_reader.h"
#include "vesk/device_table.h"

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
