#include "ug/buttons.h"

#include "translate.h"
#include "ug/app_data.h"

Evas_Object *add_popup_button(Evas_Object *popup, const char *part, const char *text, Evas_Smart_Cb clicked,
                              AppData *app)
{
    Evas_Object *button = elm_button_add(popup);
    elm_object_style_set(button, "C_ButtonBasic_WhiteText");
    elm_object_text_set(button, text);
    elm_object_part_content_set(popup, part, button);
    if (clicked)
        evas_object_smart_callback_add(button, "clicked", clicked, app);
    return button;
}

Evas_Object *add_board_icon(Evas_Object *button, const char *name)
{
    if (!b_is_tablo)
        return nullptr;
    Evas_Object *icon = elm_icon_add(button);
    elm_icon_standard_set(icon, name);
    elm_object_part_content_set(button, "icon", icon);
    evas_object_show(icon);
    return icon;
}

void set_button_icon(Evas_Object *icon, const char *name)
{
    if (icon)
        elm_icon_standard_set(icon, name);
}

void show_normal_buttons(AppData *app)
{
    elm_object_text_set(app->edit_button, translated("COM_SID_EDIT"));
    set_button_icon(app->edit_icon, "i_edit");
    elm_object_text_set(app->close_button, translated("COM_SID_CLOSE"));
    set_button_icon(app->close_icon, "i_close_cancel");
}
